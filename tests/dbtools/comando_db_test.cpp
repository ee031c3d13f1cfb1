// Goal: "quorvel db …" says by its exit code what happened and leaves no half-made files.
// Method: the command line is parsed as main() does it.
#include "apoyo/sesiones.h"
#include "dbtools/base.h"
#include "dbtools/linea.h"
#include "oficina/salida.h"

#include <filesystem>
#include <fstream>

namespace quorvel::dbtools {
namespace {

using pruebas::correr;
using pruebas::Corrida;

TEST(ComandoDb, crear_revisar_danar_afinar) {
    const std::string ruta = apoyo::carpeta_nueva() + "/año 2024.db";
    const std::string en_linea = " '" + ruta + "'";
    EXPECT_EQ(correr("db create --demo" + en_linea).codigo, 0);
    EXPECT_EQ(correr("db check" + en_linea).texto, "Base de datos sin observaciones\n");
    abrir_base(ruta, Abrir::existente)->ejecutar("drop index ctcquorvel_numero");
    const Corrida revision = correr("db check 'sqlite:" + ruta + "'");
    EXPECT_EQ(revision.codigo, 1);
    EXPECT_EQ(revision.texto, "Falta el índice ctcquorvel_numero\n");
    EXPECT_EQ(correr("db tune" + en_linea).texto, "Índices creados: 1\n");
    EXPECT_EQ(correr("db check" + en_linea).codigo, 0);
}

TEST(ComandoDb, lo_que_no_se_puede_hacer_no_deja_nada) {
    const std::string carpeta = apoyo::carpeta_nueva();
    const Corrida falta = correr("db check " + carpeta + "/no.db");
    EXPECT_EQ(falta.codigo, oficina::SIN_DATOS);
    EXPECT_EQ(falta.error, "No existe la base de datos " + carpeta + "/no.db\n");
    EXPECT_EQ(correr("db create " + carpeta + "/sin/carpeta.db").codigo, oficina::SIN_DATOS);
    EXPECT_EQ(correr("db create postgresql://127.0.0.1:1/nada").codigo, oficina::SIN_DATOS);
    EXPECT_NE(correr("db create").codigo, 0);
    EXPECT_NE(correr("db").codigo, 0);
    EXPECT_TRUE(std::filesystem::is_empty(carpeta));
    const std::string carta = carpeta + "/carta.db";
    std::ofstream(carta) << std::string(2000, 'x');
    for (const std::string orden : {"db check ", "db tune ", "db create "})
        EXPECT_EQ(correr(orden + carta).error,
                  "Está dañada la base de datos " + carta + ": file is not a database\n");

    const std::string existente = carpeta + "/una.db";
    EXPECT_EQ(correr("db create " + existente).codigo, 0);
    const Corrida otra_vez = correr("db create --demo " + existente); // tables without a company: filled
    EXPECT_EQ(otra_vez.codigo, 0) << otra_vez.error;
    EXPECT_EQ(correr("db create " + existente).error, "La base de datos ya contiene comprobantes\n");
    EXPECT_EQ(correr("db create --demo " + existente).error, "La base de datos ya contiene una empresa\n");
    EXPECT_EQ(correr("db check " + existente).codigo, 0);
}

class ComandoUsuario : public testing::TestWithParam<apoyo::Motor> {};
INSTANTIATE_TEST_SUITE_P(Motores, ComandoUsuario, testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& info) { return apoyo::nombre(info.param); });

TEST_P(ComandoUsuario, toma_el_codigo_que_sigue) {
    const std::string conexion = apoyo::conexion_nueva(GetParam()), orden = "db user '" + conexion + "' ";
    ASSERT_EQ(correr("db create '" + conexion + "'").codigo, 0);
    EXPECT_EQ(correr(orden + "\"ANA O'HIGGINS\"").texto, "Usuario 1: ANA O'HIGGINS\n");
    EXPECT_EQ(correr(orden + "LUIS --solo-suyos --sin-imprimir").texto, "Usuario 2: LUIS\n");
    EXPECT_EQ(correr(orden + "EVA --sin-borrar").codigo, 0);
    EXPECT_EQ(correr(orden + "' '").codigo, oficina::SIN_DATOS);
    EXPECT_NE(correr(orden).codigo, 0);
    EXPECT_EQ(apoyo::filas(*abrir_sesion(conexion),
                           "select usuario,n_usuario,alias,permiso from admusuario order by usuario"),
              "1|ANA O'HIGGINS|1|11111;2|LUIS|2|11110;3|EVA|1|11011");
}

} // namespace
} // namespace quorvel::dbtools
