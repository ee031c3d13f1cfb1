// Goal: a program that dies leaves every voucher wholly there or wholly not. Method: a process does the job
// and kills itself before its n-th statement, for every n; the database is then opened, checked and compared
// with what it held before and what it holds after the whole job.
#include "apoyo/proceso.h"
#include "apoyo/sesion_vigilada.h"
#include "fallas/trabajos.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <sstream>
#include <thread>

using namespace quorvel;
using namespace quorvel::apoyo;
using namespace quorvel::fallas;
using pruebas::Pantalla;

namespace {

/// Does the job and dies before its n-th statement. @return what the screen said
std::string hacer_y_morir(const Trabajo& t, const Escena& e, int n) {
    Pantalla p(e.conexion, e.carpeta, 1);
    auto vigilada = std::make_unique<SesionVigilada>(std::move(p.db));
    SesionVigilada& sesion = *vigilada;
    p.db = std::move(vigilada);
    p.abrir();
    t.preparar(p);
    (void)p.mensajes();
    sesion.antes = [n, hechas = 0](const std::string&) mutable {
        if (++hechas == n) morir();
    };
    t.hacer(p);
    sesion.antes = [](const std::string&) {};
    return ultimo_aviso(p);
}

class Muerte : public ::testing::TestWithParam<std::tuple<Motor, Trabajo>> {};
INSTANTIATE_TEST_SUITE_P(Motores, Muerte,
                         ::testing::Combine(::testing::ValuesIn(MOTORES), ::testing::ValuesIn(TRABAJOS)),
                         [](const auto& i) {
                             return nombre(std::get<0>(i.param)) + "_" + std::get<1>(i.param).nombre;
                         });

TEST_P(Muerte, EnteroONada) {
    const auto& [motor, trabajo] = GetParam();
    std::vector<std::string> huellas;
    for (int n = 1;; ++n) {
        SCOPED_TRACE("dies before statement " + std::to_string(n));
        const Escena e = escena(motor);
        Proceso p([&] { return hacer_y_morir(trabajo, e, n); });
        const Final f = p.esperar();
        ASSERT_TRUE(f.matado || f.codigo == 0) << f.codigo;
        EXPECT_EQ(revision(e), "");
        const auto db = abrir_sesion(e.conexion);
        const std::string ahora = huella(*db);
        if (huellas.empty() || ahora != huellas.back()) huellas.push_back(ahora);
        const std::string comprobantes = filas(*db, "select count(*) from ctcquorvel");
        if (std::string(trabajo.nombre).starts_with("cortar") && comprobantes == "1") {
            const std::string borradores = e.carpeta + "/borradores";
            EXPECT_TRUE(std::filesystem::exists(borradores) && !std::filesystem::is_empty(borradores))
                << "cut and nowhere to be found";
        }
        if (f.matado) continue;
        EXPECT_EQ(f.texto, trabajo.dicho);
        RecordProperty("muertes", n - 1);
        EXPECT_GT(n, 4) << "too few statements were watched";
        break;
    }
    EXPECT_EQ(huellas.size(), static_cast<std::size_t>(trabajo.etapas) + 1);
}

TEST(MuerteEnCualquierMomento, LoConfirmadoEsta) {
    const char* pedidas = std::getenv("QUORVEL_MUERTES");
    const int muertes = pedidas != nullptr ? std::atoi(pedidas) : 4;
    std::mt19937 azar(4711);
    int grabados = 0;
    for (const Motor motor : MOTORES) {
        const Escena e = escena(motor);
        for (int i = 0; i < muertes; ++i) {
            SCOPED_TRACE(nombre(motor) + " " + std::to_string(i));
            Proceso p([&](int aviso) { Pantalla(e.conexion, e.carpeta, 1).grabar_sin_fin(aviso); });
            p.esperar_salida();
            std::this_thread::sleep_for(std::chrono::microseconds(azar() % 70000));
            p.matar();
            std::istringstream confirmados(p.esperar().texto);
            const auto db = abrir_sesion(e.conexion);
            for (std::string numero; std::getline(confirmados, numero); ++grabados)
                EXPECT_EQ(filas(*db, "select count(*) from ctdquorvel where num_docum='" + numero + "'"),
                          "2");
            EXPECT_EQ(revision(e), "");
        }
    }
    RecordProperty("grabados", grabados);
    EXPECT_GE(grabados, 2 * muertes);
}

} // namespace
