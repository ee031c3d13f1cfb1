// Goal: what is done every month is dated a month later. Method: dates at the ends of months, glosses as
// people write them.
#include "text/meses.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace std::chrono;

namespace {

TEST(Meses, TheNextMonthOfADateAndOfAText) {
    EXPECT_EQ(mes_siguiente(year{2026} / 1 / 15), year{2026} / 2 / 15);
    EXPECT_EQ(mes_siguiente(year{2026} / 12 / 5), year{2027} / 1 / 5);
    EXPECT_EQ(mes_siguiente(year{2026} / 1 / 30), year{2026} / 2 / 28);
    EXPECT_EQ(mes_siguiente(year{2026} / 4 / 30), year{2026} / 5 / 31)
        << "the end of the month stays the end";
    const std::pair<const char*, const char*> textos[] = {
        {"Arriendo octubre", "Arriendo noviembre"},
        {"ARRIENDO DICIEMBRE 2026", "ARRIENDO ENERO 2027"},
        {"Sueldos Noviembre de 2026", "Sueldos Diciembre de 2026"},
        {"Luz diciembre del 2025, agua enero", "Luz enero del 2026, agua febrero"},
        {"PERIODO 12/2026 Y 9-2026", "PERIODO 01/2027 Y 10-2026"},
        {"Factura 45 del 03/10/2026", "Factura 45 del 03/10/2026"},
        {"Marzotto S.A. 13/2026", "Marzotto S.A. 13/2026"},
        {"", ""},
    };
    for (const auto& [antes, despues] : textos) EXPECT_EQ(con_meses_siguientes(antes), despues);
}

} // namespace
