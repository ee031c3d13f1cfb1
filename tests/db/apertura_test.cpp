#include "apoyo/disco.h"
#include "apoyo/sesiones.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

std::string error_de(const std::string& conexion) {
    try {
        (void)abrir_sesion(conexion);
    } catch (const ErrorSesion& e) {
        return e.what();
    }
    return "";
}

TEST(Apertura, EveryMistakeHasItsSentence) {
    const std::string carpeta = carpeta_nueva();
    std::ofstream(carpeta + "/texto.db") << std::string(4096, 'x');
    EXPECT_NE(error_de("mysql://x").find("Conexión no válida"), std::string::npos);
    EXPECT_NE(error_de("").find("Conexión no válida"), std::string::npos);
    EXPECT_NE(error_de("sqlite:").find("Conexión no válida"), std::string::npos);
    EXPECT_EQ(error_de("sqlite:" + carpeta + "/falta.db"),
              "No existe la base de datos " + carpeta + "/falta.db");
    EXPECT_FALSE(std::filesystem::exists(carpeta + "/falta.db"));
    EXPECT_EQ(error_de("sqlite:" + carpeta + "/texto.db"),
              "El archivo " + carpeta + "/texto.db no es una base de datos");
    EXPECT_NE(error_de("sqlite:" + carpeta).find("No se puede abrir la base de datos " + carpeta),
              std::string::npos);
    EXPECT_NE(error_de("sqlite:" + carpeta + "/no/hay.db?create=1").find("No se puede abrir"),
              std::string::npos);
    EXPECT_NE(error_de("postgresql://127.0.0.1:1/x").find("No se puede conectar"), std::string::npos);
}

TEST(Apertura, CreationAndReportDatabase) {
    const std::string carpeta = carpeta_nueva();
    const auto db = crear_sesion("sqlite:" + carpeta + "/nueva.db");
    EXPECT_EQ(db->Name(), carpeta + "/nueva.db");
    EXPECT_EQ(db->TypeDB(), 2);
    EXPECT_EQ(error_de("sqlite:" + carpeta + "/nueva.db"), "");
    EXPECT_EQ(abrir_sesion_informes("sqlite:" + carpeta + "/print.db")->Name(), carpeta + "/print.db");
    EXPECT_THROW((void)abrir_sesion_informes(carpeta + "/reportes.db"), ErrorSesion);
    EXPECT_FALSE(std::filesystem::exists(carpeta + "/reportes.db"));
}

TEST(Apertura, TwoSessionsOnOneFile) {
    const std::string conexion = conexion_nueva(Motor::sqlite);
    const auto a = abrir_sesion(conexion), b = abrir_sesion(conexion);
    ejecutar(*a, "create table t (k integer)");
    const auto leyendo = b->NewRecord("select k from t");
    EXPECT_TRUE(leyendo->eof());
    a->BeginTrans();
    ejecutar(*a, "insert into t values (1)");
    EXPECT_EQ(filas(*b, "select count(*) from t"), "0");
    EXPECT_EQ(b->executesql("insert into t values (9)"), 0) << "waits five seconds, then says which file";
    EXPECT_NE(b->last_error().find(b->Name() + " está bloqueada"), std::string::npos) << b->last_error();
    a->CommitTrans();
    EXPECT_EQ(filas(*b, "select count(*) from t"), "1");
    b->BeginTrans();
    ejecutar(*b, "insert into t values (2)");
    b->CommitTrans();
    EXPECT_EQ(filas(*a, "select count(*) from t"), "2");
}

/// The engine ends a transaction by itself when it cannot write; what the caller goes on with must not be
/// kept without what came before.
TEST(SesionSqlite, NothingGoesOnAfterATransactionThatTheEngineEnded) {
    const auto db = sesion_nueva(Motor::sqlite);
    ejecutar(*db, "create table t (k integer, s text)");
    db->BeginTrans();
    ejecutar(*db, "insert into t values (1,'')");
    {
        const ArchivosCortos lleno(1 << 16);
        EXPECT_EQ(db->executesql("insert into t values (2,'" + std::string(4 << 20, 'x') + "')"), 0);
    }
    EXPECT_TRUE(db->session_failed());
    EXPECT_NE(db->last_error().find("File too large"), std::string::npos) << db->last_error();
    EXPECT_EQ(db->executesql("insert into t values (3,'')"), 0);
    EXPECT_THROW(db->CommitTrans(), ErrorSesion);
    EXPECT_EQ(filas(*db, "select k from t"), "");
    EXPECT_EQ(db->executesql("insert into t values (k)"), 0);
    EXPECT_FALSE(db->session_failed()) << "a bad statement is nobody else's fault";
    Transaccion otra(*db);
    ejecutar(*db, "insert into t values (4,'')");
    otra.confirmar();
    EXPECT_EQ(filas(*db, "select k from t"), "4");
}

} // namespace
