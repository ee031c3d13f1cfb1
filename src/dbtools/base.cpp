#include "dbtools/base.h"

#include "dbtools/guion.h"
#include "platform/db/clsConexion.h"
#include "platform/db/literal.h"
#include "platform/db/postgres/server_text.h"
#include "platform/db/sqlite/file_fault.h"
#include "platform/db/sqlite/open_file.h"

#include <libpq-fe.h>
#include <sqlite3.h>

#include <filesystem>

namespace quorvel::dbtools {
namespace {

bool empieza(const std::string& texto, std::string_view con) { return texto.rfind(con, 0) == 0; }

class BaseSqlite final : public Base {
public:
    BaseSqlite(const std::string& ruta, Abrir modo) : ruta_(ruta) {
        const bool existe = std::filesystem::exists(ruta);
        if (!existe && modo == Abrir::existente) throw ErrorSesion("No existe la base de datos " + ruta, {});
        const int modos = SQLITE_OPEN_READWRITE | (modo == Abrir::crear ? SQLITE_OPEN_CREATE : 0);
        const int rc = open_file(ruta, modos, &db_);
        try {
            if (rc != SQLITE_OK)
                throw ErrorSesion("No se pudo abrir la base de datos " + ruta + ": " + sqlite3_errmsg(db_),
                                  {});
            sqlite3_busy_timeout(db_, 5000);
            // A join over an automatic index of SQLite 3.40 loses rows whose texts differ in trailing blanks.
            ejecutar("pragma automatic_index=off");
            if (!existe) ejecutar("pragma journal_mode=wal");
        } catch (...) { // a constructor that throws has no destructor
            sqlite3_close_v2(db_);
            throw;
        }
    }
    ~BaseSqlite() override { sqlite3_close_v2(db_); }
    BaseSqlite(const BaseSqlite&) = delete;
    BaseSqlite& operator=(const BaseSqlite&) = delete;

    void ejecutar(const std::string& guion) override {
        if (sqlite3_exec(db_, guion.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fallar(guion);
    }
    Filas consultar(const std::string& sql) override {
        sqlite3_stmt* consulta = nullptr;
        if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &consulta, nullptr) != SQLITE_OK) fallar(sql);
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> dueno(consulta, sqlite3_finalize);
        Filas filas;
        int rc = sqlite3_step(consulta);
        for (; rc == SQLITE_ROW; rc = sqlite3_step(consulta)) {
            std::vector<std::string>& fila = filas.emplace_back();
            for (int i = 0; i < sqlite3_column_count(consulta); ++i) {
                const unsigned char* texto = sqlite3_column_text(consulta, i);
                fila.emplace_back(texto ? reinterpret_cast<const char*>(texto) : "");
            }
        }
        if (rc != SQLITE_DONE) fallar(sql);
        return filas;
    }
    std::string motor() const override { return "sqlite"; }
    Filas columnas() override {
        return consultar(
            "select m.name, c.name from sqlite_master m, pragma_table_info(m.name) c where m.type='table'");
    }
    Filas obligatorias() override {
        return consultar("select m.name, c.name from sqlite_master m, pragma_table_info(m.name) c"
                         " where m.type='table' and c.\"notnull\"=1 and c.pk=0");
    }
    /// The rows are stored alike with and without the rule: its text is all that there is of it.
    void relajar(const std::string& tabla, const std::vector<std::string>& columnas) override {
        ejecutar("begin immediate");
        try {
            const std::string donde = " where type='table' and lower(name)=" + sql_texto(tabla);
            const std::string antes = consultar("select sql from sqlite_master" + donde).at(0).at(0);
            const std::string version = consultar("pragma schema_version").at(0).at(0);
            ejecutar("pragma writable_schema=on; update sqlite_master set sql=" +
                     sql_texto(sin_obligacion(antes, {columnas.begin(), columnas.end()})) + donde +
                     "; pragma schema_version=" + std::to_string(std::stol(version) + 1) +
                     "; pragma writable_schema=off; commit");
        } catch (...) {
            sqlite3_exec(db_, "rollback; pragma writable_schema=off", nullptr, nullptr, nullptr);
            throw;
        }
    }
    Filas indices() override { return consultar("select name from sqlite_master where type='index'"); }

private:
    [[noreturn]] void fallar(const std::string& sql) {
        const std::string del_archivo = file_fault(db_, ruta_);
        throw ErrorSesion(del_archivo.empty() ? sqlite3_errmsg(db_) : del_archivo, sql);
    }
    std::string ruta_;
    sqlite3* db_ = nullptr;
};

class BasePostgres final : public Base {
public:
    explicit BasePostgres(const std::string& conexion)
        : db_(PQconnectdb(server_text(conexion).libpq.c_str()), PQfinish) {
        if (PQstatus(db_.get()) != CONNECTION_OK)
            throw ErrorSesion(std::string("No se pudo conectar: ") + PQerrorMessage(db_.get()), {});
        PQsetClientEncoding(db_.get(), "UTF8");
        // what the server remarks on the way is nothing that a person could act on
        PQsetNoticeProcessor(
            db_.get(), [](void*, const char*) {}, nullptr);
    }
    void ejecutar(const std::string& guion) override { (void)correr(guion); }
    Filas consultar(const std::string& sql) override {
        const Resultado r = correr(sql);
        Filas filas;
        for (int f = 0; f < PQntuples(r.get()); ++f) {
            std::vector<std::string>& fila = filas.emplace_back();
            for (int c = 0; c < PQnfields(r.get()); ++c) fila.emplace_back(PQgetvalue(r.get(), f, c));
        }
        return filas;
    }
    std::string motor() const override { return "postgres"; }
    Filas columnas() override {
        return consultar("select table_name, column_name from information_schema.columns"
                         " where table_schema = any(current_schemas(false))");
    }
    Filas obligatorias() override {
        return consultar("select c.table_name, c.column_name from information_schema.columns c"
                         " where c.is_nullable='NO' and c.table_schema = any(current_schemas(false))"
                         " and not exists (select 1 from information_schema.key_column_usage k"
                         " where k.table_schema=c.table_schema and k.table_name=c.table_name"
                         " and k.column_name=c.column_name)");
    }
    void relajar(const std::string& tabla, const std::vector<std::string>& columnas) override {
        std::string sql;
        for (const std::string& columna : columnas)
            sql +=
                (sql.empty() ? "alter table " + tabla : ",") + " alter column " + columna + " drop not null";
        ejecutar(sql);
    }
    Filas indices() override {
        return consultar("select indexname from pg_indexes where schemaname = any(current_schemas(false))");
    }

private:
    using Resultado = std::unique_ptr<PGresult, void (*)(PGresult*)>;
    Resultado correr(const std::string& sql) {
        Resultado r(PQexec(db_.get(), sql.c_str()), PQclear);
        const ExecStatusType estado = PQresultStatus(r.get());
        if (estado != PGRES_COMMAND_OK && estado != PGRES_TUPLES_OK) fallar(sql);
        return r;
    }
    [[noreturn]] void fallar(const std::string& sql) {
        std::string mensaje = PQerrorMessage(db_.get());
        while (!mensaje.empty() && mensaje.back() == '\n') mensaje.pop_back();
        throw ErrorSesion(mensaje, sql);
    }
    std::unique_ptr<PGconn, void (*)(PGconn*)> db_;
};

} // namespace

std::string normalizar_conexion(const std::string& conexion) {
    if (empieza(conexion, "postgresql://") || empieza(conexion, "postgres://")) return conexion;
    const std::string ruta = empieza(conexion, "sqlite:") ? conexion.substr(7) : conexion;
    return "sqlite:" + ruta.substr(0, ruta.find('?')); // a session's options mean nothing here
}

std::unique_ptr<Base> abrir_base(const std::string& conexion, Abrir modo) {
    const std::string completa = normalizar_conexion(conexion);
    if (completa == "sqlite:") throw ErrorSesion("Falta el nombre de la base de datos", {});
    if (empieza(completa, "sqlite:")) return std::make_unique<BaseSqlite>(completa.substr(7), modo);
    return std::make_unique<BasePostgres>(completa);
}

} // namespace quorvel::dbtools
