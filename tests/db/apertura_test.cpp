#include "apoyo/disco.h"
#include "apoyo/proceso.h"
#include "apoyo/sesiones.h"
#include "dbtools/base.h"
#include "interchange/archivo_comprobante.h"
#include "platform/files/attachments.h"
#include "platform/files/engine_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace quorvel;
using namespace quorvel::apoyo;
namespace fs = std::filesystem;

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

/// Every other descriptor of the file that this process closes would take the locks with it.
TEST(SesionSqlite, LocksStayWithTheDatabaseWhateverElseIsClosed) {
    const std::string conexion = conexion_nueva(Motor::sqlite);
    auto a = abrir_sesion(conexion), b = abrir_sesion(conexion);
    ejecutar(*a, "create table t (k integer)");
    const std::string base = a->Name();
    for (const char* cola : {"", "-wal", "-shm"}) EXPECT_GE(std::ifstream(base + cola).get(), 0);
    EXPECT_TRUE(base_en_uso(base));
    a.reset();
    EXPECT_TRUE(base_en_uso(base));
    ejecutar(*b, "insert into t values (1)");
    b.reset();
    EXPECT_FALSE(base_en_uso(base));
}

/// The older kind of journal locks and unlocks at every statement, by whichever connection is the last.
TEST(SesionSqlite, WhatOneConnectionLocksAnotherUnlocks) {
    const std::string base = carpeta_nueva() + "/una.db";
    const auto a = dbtools::abrir_base(base, dbtools::Abrir::crear),
               b = dbtools::abrir_base(base, dbtools::Abrir::existente);
    a->ejecutar("pragma journal_mode=delete; create table t (k integer)");
    for (const auto& una : {a.get(), b.get()}) una->ejecutar("begin; select * from t");
    a->ejecutar("commit");
    EXPECT_TRUE(base_en_uso(base));
    b->ejecutar("commit");
    EXPECT_FALSE(base_en_uso(base));
    b->ejecutar("insert into t values (1)");
}

TEST(SesionSqlite, NobodyElseUsesTheFilesOfAnOpenDatabase) {
    auto db = sesion_nueva(Motor::sqlite);
    const std::string base = db->Name(), otra = base + ".otra";
    fs::create_hard_link(base, otra);
    std::ofstream(carpeta_nueva() + "/ajena.db");
    EXPECT_FALSE(engine_file(fs::path(base).parent_path() / "ajena.db"));
    EXPECT_FALSE(engine_file(base + "-respaldo"));
    for (const char* cola : {"", "-wal", "-shm", "-journal", ".otra"}) {
        SCOPED_TRACE(cola);
        EXPECT_THROW(escribir_archivo(base + cola, "x"), ErrorArchivo);
        EXPECT_THROW((void)leer_archivo(base + cola), ErrorArchivo);
        EXPECT_FALSE(Attachments(carpeta_nueva(), "BASE").add("1", base + cola));
    }
    db.reset();
    EXPECT_FALSE(engine_file(base));
}

TEST(SesionSqlite, AChangeIsUndoneThoughAListCannotBeReadToItsEnd) {
    const auto db = sesion_nueva(Motor::sqlite);
    ejecutar(*db, "create table t (k integer)");
    ejecutar(*db, "insert into t values (1)");
    for (int i = 0; i < 12; ++i) ejecutar(*db, "insert into t select k from t");
    db->BeginTrans();
    ejecutar(*db, "insert into t values (2)");
    const auto lista = db->NewRecord("select k from t");
    EXPECT_FALSE(lista->eof());
    db->while_waiting([] { return false; });
    db->rollback();
    db->while_waiting({});
    EXPECT_EQ(filas(*db, "select count(*) from t where k=2"), "0");
    db->BeginTrans();
    db->rollback();
}

TEST(SesionSqlite, NothingIsSavedInALogThatIsGone) {
    const auto db = sesion_nueva(Motor::sqlite);
    ejecutar(*db, "create table t (k integer)");
    const std::string registro = db->Name() + "-wal";
    for (const bool reemplazado : {false, true}) {
        db->BeginTrans();
        ejecutar(*db, "insert into t values (1)");
        fs::rename(registro, registro + ".otro");
        if (reemplazado) std::ofstream(registro) << "otro";
        EXPECT_THROW(db->CommitTrans(), SesionFallida);
        EXPECT_THROW(db->BeginTrans(), SesionFallida);
        fs::rename(registro + ".otro", registro);
        EXPECT_EQ(filas(*db, "select k from t"), "");
    }
    ejecutar(*db, "insert into t values (2)");
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
