#include "text/fecha.h"

#include <gtest/gtest.h>

#include <ctime>

using namespace quorvel;

namespace {

// Goal: a text is a date only when the calendar has it, and each reading knows its own order.
TEST(Fecha, ReadingsAndForms) {
    struct {
        const char *texto, *dmy, *mdy, *iso; // ISO form of what is read, "" for no date
    } casos[] = {
        {"05/03/2024", "2024-03-05", "2024-05-03", ""},
        {"5-3-2024", "2024-03-05", "2024-05-03", ""},
        {"29/02/2024", "2024-02-29", "", ""},
        {"29/02/2023", "", "", ""},
        {"31/02/2024", "", "", ""},
        {"12/31/2024", "", "2024-12-31", ""},
        {"2024-03-05", "", "", "2024-03-05"},
        {"2024-03-05 10:20:30", "", "", "2024-03-05"},
        {"", "", "", ""},
        {"__/__/____", "", "", ""},
        {"01/01/24", "", "", ""},
        {"00/01/2024", "", "", ""},
        {"1/2/3/2024", "", "", ""},
        {"01/01/0000", "", "", ""},
        {" 05/03/2024 ", "2024-03-05", "2024-05-03", ""},
        {"05/03/20245", "", "", ""},
        {"0:/03/2024", "", "", ""},
        {"01/01/0001", "0001-01-01", "0001-01-01", ""},
        {"2024-03-05T10:20", "", "", "2024-03-05"},
        {"2024-03-05x", "", "", ""},
        {" 2024-03-05 10:20 ", "", "", "2024-03-05"},
        {"2024-03-05T", "", "", "2024-03-05"},
        {"2024-03", "", "", ""},
        {"05/2024", "", "", ""},
        {"05//2024", "", "", ""},
        {"1./03/2024", "", "", ""},
        {"05/00003/2024", "", "", ""},
        {"05/259/2024", "", "", ""}, // 3 in a byte
        {"261/03/2024", "", "", ""},
    };
    const auto iso = [](const std::optional<Fecha>& f) { return f ? fecha_iso(*f) : std::string(); };
    for (const auto& c : casos) {
        EXPECT_EQ(iso(leer_fecha(c.texto)), c.dmy) << c.texto;
        EXPECT_EQ(iso(leer_fecha_mdy(c.texto)), c.mdy) << c.texto;
        EXPECT_EQ(iso(leer_fecha_iso(c.texto)), c.iso) << c.texto;
    }
    const Fecha f{std::chrono::year{2024} / 3 / 5};
    EXPECT_EQ(fecha_dmy(f), "05/03/2024");
    EXPECT_EQ(fecha_mdy(f), "03/05/2024");
    EXPECT_EQ(RelojFijo(f).hoy(), f);
    const auto ahora = [] {
        const std::time_t t = std::time(nullptr);
        char texto[20];
        return std::string(texto, std::strftime(texto, sizeof texto, "%Y-%m-%d %H:%M", std::localtime(&t)));
    };
    const std::string antes = ahora();
    const std::string reloj = fecha_iso(RelojSistema{}.hoy()) + " " + RelojSistema{}.hora();
    EXPECT_TRUE(reloj == antes || reloj == ahora()) << reloj;
}

// Goal: what people type for short is the date that they mean, or none.
TEST(Fecha, ShortForms) {
    const std::pair<const char*, const char*> textos[] = {{"5/3/24", "2024-03-05"},
                                                          {"050324", "2024-03-05"},
                                                          {"5/3", "2026-03-05"},
                                                          {"0503", "2026-03-05"},
                                                          {"05032024", "2024-03-05"},
                                                          {"2024-03-05", "2024-03-05"},
                                                          {" 5-3-24 ", "2024-03-05"},
                                                          {"1/1/49", "2049-01-01"},
                                                          {"1/1/50", "1950-01-01"},
                                                          {"31/12/00", "2000-12-31"},
                                                          {"31/2", ""},
                                                          {"5", ""},
                                                          {"503", ""},
                                                          {"05032", ""},
                                                          {"0503202", ""},
                                                          {"5/3/2024/1", ""},
                                                          {"5//2024", ""},
                                                          {"5/3/20245", ""},
                                                          {"005/3/24", ""},
                                                          {"5/003/24", ""},
                                                          {"a5/3/24", ""},
                                                          {"5/3/2a", ""},
                                                          {"", ""},
                                                          {"5/13/24", ""},
                                                          {"050324050", ""},
                                                          {"5/3/1", ""}};
    for (const auto& [texto, iso] : textos) {
        const auto f = leer_fecha_corta(texto, 2026);
        EXPECT_EQ(f ? fecha_iso(*f) : "", iso) << texto;
    }
}

} // namespace
