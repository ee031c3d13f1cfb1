// Goal: whatever several people do in whatever order, database, screens and a plain model agree, and the
// checker finds nothing. Method: seeded random sequences over three windows of two users on both engines.
// Longer runs and a failing seed again: ./test --modelo STEPS [SEED]
#include "fallas/simulacion.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace quorvel;
using namespace quorvel::apoyo;
using namespace quorvel::fallas;

namespace {

long pedido(const char* nombre, long si_no) {
    const char* const valor = std::getenv(nombre);
    return valor != nullptr ? std::atol(valor) : si_no;
}

class AlAzar : public ::testing::TestWithParam<Motor> {};
INSTANTIATE_TEST_SUITE_P(Motores, AlAzar, ::testing::ValuesIn(MOTORES),
                         [](const auto& m) { return nombre(m.param); });

TEST_P(AlAzar, BasePantallasYModeloConcuerdan) {
    constexpr long PASOS_POR_SEMILLA = 500; // then a fresh company: long ones grow slow and rarely new
    const long pasos = pedido("QUORVEL_PASOS", GetParam() == Motor::sqlite ? 2000 : 500);
    long hechos = 0;
    for (long semilla = pedido("QUORVEL_SEMILLA", 1); hechos < pasos; ++semilla) {
        Simulacion s(GetParam(), static_cast<unsigned>(semilla));
        std::string camino;
        for (long n = 0; n < PASOS_POR_SEMILLA && hechos < pasos; ++n, ++hechos) {
            std::string mal = s.paso();
            camino += std::to_string(n) + " " + s.ultima() + "\n";
            if (mal.empty() && n % 25 == 24) mal = s.revisar();
            ASSERT_EQ(mal, "") << camino << "again: ./test --modelo " << n + 1 << " " << semilla;
            ASSERT_FALSE(HasFailure()) << camino << "again: ./test --modelo " << n + 1 << " " << semilla;
        }
    }
    RecordProperty("pasos", static_cast<int>(hechos));
}

} // namespace
