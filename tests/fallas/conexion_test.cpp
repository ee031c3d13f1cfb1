// Goal: when the connection is lost the user is told what really happened, and the screen loses nothing.
// Method: a relay in front of the server loses each commit, or its answer, of every job; the server's
// connections are ended at each statement.
#include "apoyo/intermediario.h"
#include "apoyo/pg.h"
#include "fallas/puesto.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;
using namespace quorvel::fallas;
using pruebas::Pantalla;
using Perder = Intermediario::Perder;

namespace {

class Conexion : public ::testing::TestWithParam<Trabajo> {};
INSTANTIATE_TEST_SUITE_P(Trabajos, Conexion, ::testing::ValuesIn(TRABAJOS),
                         [](const auto& i) { return i.param.nombre; });

/// What the undisturbed job leaves.
std::string despues_de(const Trabajo& t) {
    const Escena e = escena(Motor::postgres);
    Puesto puesto(e, e.conexion);
    puesto.preparar(t);
    EXPECT_EQ(puesto.hacer(t, [](const std::string&) {}), t.dicho);
    return base(e);
}

TEST_P(Conexion, ElCommitSinRespuestaSeAverigua) {
    const Trabajo& t = GetParam();
    const std::string despues = despues_de(t);
    int perdidos = 0;
    for (const Perder que : {Perder::respuesta, Perder::pedido})
        for (int cual = 1;; ++cual) {
            SCOPED_TRACE((que == Perder::respuesta ? "answer of commit " : "commit ") + std::to_string(cual));
            const Escena e = escena(Motor::postgres);
            Intermediario red(e.conexion);
            Puesto puesto(e, red.conexion());
            puesto.preparar(t);
            const std::string antes = base(e);
            int commits = 0;
            const std::string dicho = puesto.hacer(t, [&](const std::string& sql) {
                if (sql == "commit" && ++commits == cual) red.perder(que);
            });
            if (commits < cual) break;
            ++perdidos;
            if (que == Perder::respuesta) {
                EXPECT_EQ(dicho, t.dicho) << "it was done, and the user must read so";
                EXPECT_EQ(base(e), despues);
            } else if (t.etapas == 1) {
                EXPECT_EQ(base(e), antes);
                EXPECT_EQ(en_pantalla(puesto.p), puesto.en_riesgo);
            }
            EXPECT_EQ(revision(e), "");
            if (que == Perder::pedido && t.etapas == 1) {
                EXPECT_EQ(puesto.hacer(t, [](const std::string&) {}), t.dicho);
                EXPECT_EQ(base(e), despues);
            }
        }
    EXPECT_TRUE(perdidos > 0 || std::string(t.nombre) == "cerrar_anio");
}

TEST_P(Conexion, CortadaEnCadaSentencia) {
    const Trabajo& t = GetParam();
    if (t.etapas > 1) GTEST_SKIP() << "its parts are rows of their own; the year end has its own test";
    const std::string despues = despues_de(t);
    const Escena e = escena(Motor::postgres);
    Puesto puesto(e, e.conexion);
    puesto.preparar(t);
    const std::string antes = base(e);
    // cut before its first statement a transaction begins again by itself
    for (int n = 2;; ++n) { // the same screen tries again and again
        SCOPED_TRACE("cut before statement " + std::to_string(n) + " of the transaction");
        int hechas = 0;
        puesto.en_riesgo.clear();
        const std::string dicho = puesto.hacer(t, [&](const std::string& sql) {
            if (sql != "begin" && !puesto.en_riesgo.empty() && ++hechas == n) pg_cortar_conexiones();
        });
        const std::string ahora = base(e);
        if (ahora == despues) {
            EXPECT_EQ(dicho, t.dicho);
            EXPECT_GT(n, 3) << "nothing was cut";
            break;
        }
        ASSERT_EQ(ahora, antes);
        EXPECT_EQ(en_pantalla(puesto.p), puesto.en_riesgo) << dicho;
        EXPECT_NE(dicho, "") << "nobody told the user";
        EXPECT_EQ(dicho.find("roblemas"), std::string::npos) << "the step is not to blame";
    }
    EXPECT_EQ(revision(e), "");
}

} // namespace
