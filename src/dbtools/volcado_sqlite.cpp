#include "dbtools/volcado.h"
#include "platform/db/clsConexion.h"
#include "platform/db/sqlite/file_fault.h"
#include "platform/db/sqlite/open_file.h"

#include <sqlite3.h>

namespace quorvel::dbtools {

namespace fs = std::filesystem;

namespace {

using Manija = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

[[noreturn]] void fallar(sqlite3* db, const std::string& sql) {
    const char* const ruta = sqlite3_db_filename(db, "main");
    const std::string del_archivo = file_fault(db, ruta != nullptr ? ruta : "");
    throw ErrorSesion(del_archivo.empty() ? sqlite3_errmsg(db) : del_archivo, sql);
}

Manija abrir(const std::string& ruta, int modo) {
    if ((modo & SQLITE_OPEN_CREATE) == 0 && !fs::exists(ruta))
        throw ErrorSesion("No existe la base de datos " + ruta, {});
    sqlite3* db = nullptr;
    const int rc = open_file(ruta, modo, &db);
    Manija manija(db, sqlite3_close_v2);
    if (rc != SQLITE_OK)
        throw ErrorSesion("No se pudo abrir la base de datos " + ruta + ": " + sqlite3_errmsg(db), {});
    sqlite3_busy_timeout(db, 5000);
    return manija;
}

void ejecutar(sqlite3* db, const char* sql) {
    if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) != SQLITE_OK) fallar(db, sql);
}

/// The first value of a query; empty without rows.
std::string valor(sqlite3* db, const char* sql) {
    sqlite3_stmt* consulta = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &consulta, nullptr) != SQLITE_OK) fallar(db, sql);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> dueno(consulta, sqlite3_finalize);
    const int rc = sqlite3_step(consulta);
    if (rc != SQLITE_ROW && rc != SQLITE_DONE) fallar(db, sql);
    const auto* texto = rc == SQLITE_ROW ? sqlite3_column_text(consulta, 0) : nullptr;
    return texto != nullptr ? reinterpret_cast<const char*>(texto) : "";
}

void exigir_sana(sqlite3* db) {
    const std::string dano = valor(db, "pragma integrity_check(1)");
    if (dano != "ok") throw ErrorSesion("La base de datos está dañada: " + dano, {});
}

/// Page by page in one transaction of the target: until its last page nothing has changed there.
void copiar_paginas(sqlite3* de, sqlite3* a, const std::string& que, const AvancePartes& avance) {
    constexpr int PAGINAS = 100;
    const std::unique_ptr<sqlite3_backup, int (*)(sqlite3_backup*)> copia(
        sqlite3_backup_init(a, "main", de, "main"), sqlite3_backup_finish);
    if (!copia) fallar(a, que);
    int rc = SQLITE_OK;
    while (rc == SQLITE_OK) {
        rc = sqlite3_backup_step(copia.get(), PAGINAS);
        const int total = sqlite3_backup_pagecount(copia.get());
        avance(que, total - sqlite3_backup_remaining(copia.get()), total);
    }
    if (rc != SQLITE_DONE) throw ErrorSesion(que + ": " + sqlite3_errstr(rc), {});
}

std::string ruta_de(const std::string& conexion) {
    const std::string ruta = normalizar_conexion(conexion).substr(std::string_view("sqlite:").size());
    if (ruta.empty()) throw ErrorSesion("Falta el nombre de la base de datos", {});
    return ruta;
}

std::unique_ptr<Base> sacar(const std::string& conexion, const fs::path& archivo,
                            const AvancePartes& avance) {
    const Manija origen = abrir(ruta_de(conexion), SQLITE_OPEN_READWRITE);
    ejecutar(origen.get(), "begin");
    (void)valor(origen.get(),
                "select count(*) from sqlite_master"); // what others save from here on stays out
    {
        const Manija copia = abrir(archivo.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        copiar_paginas(origen.get(), copia.get(), "Copiando la base de datos", avance);
        ejecutar(copia.get(), "pragma journal_mode=delete"); // one file, which reading does not change
        exigir_sana(copia.get());
    }
    return abrir_base(archivo.string(), Abrir::existente);
}

/// Written inside its own file, never by another file in its name: the engine's journal undoes what a death
/// leaves half done, whoever opens it meanwhile waits, and no log of the old contents finds a new file to
/// spoil.
class DestinoSqlite final : public Destino {
public:
    DestinoSqlite(const std::string& ruta, bool reemplazar)
        : ruta_(ruta), nueva_(!fs::exists(ruta)),
          db_(abrir(ruta, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) {
        try {
            quedar_solo(reemplazar);
        } catch (...) { // a constructor that throws has no destructor
            deshacer();
            throw;
        }
    }
    ~DestinoSqlite() override { deshacer(); }
    DestinoSqlite(const DestinoSqlite&) = delete;
    DestinoSqlite& operator=(const DestinoSqlite&) = delete;

    void poner(const fs::path& archivo, const AvancePartes& avance) override {
        const Manija origen = abrir(archivo.string(), SQLITE_OPEN_READONLY);
        exigir_sana(origen.get());
        if (valor(origen.get(), "select 1 from sqlite_master where name='ctcquorvel'").empty())
            throw ErrorSesion("El respaldo no es de una base de comprobantes", {});
        copiar_paginas(origen.get(), db_.get(), "Restaurando la base de datos", avance);
        nueva_ = false;
        ejecutar(db_.get(), "pragma journal_mode=wal");
    }

private:
    void quedar_solo(bool reemplazar) {
        bool se_puede = false;
        sqlite3_busy_timeout(db_.get(), 1000); // who has it open for work does not leave by waiting
        try {
            se_puede = reemplazar ||
                       valor(db_.get(), "select count(*) from sqlite_master where type='table'") == "0";
            // the log mode is left only by the last one who has the file open
            if (se_puede)
                ejecutar(db_.get(), "pragma locking_mode=exclusive; pragma journal_mode=delete;"
                                    " begin exclusive; commit");
        } catch (const ErrorSesion& e) {
            const int codigo = sqlite3_errcode(db_.get());
            if (codigo == SQLITE_BUSY || codigo == SQLITE_LOCKED) throw ErrorSesion(EN_USO, {});
            throw ErrorSesion(ruta_ + ": " + e.what() + "; si está dañado, guárdelo aparte y repita", {});
        }
        if (!se_puede) throw ErrorSesion(CON_TABLAS, {});
    }
    void deshacer() {
        db_.reset();
        std::error_code ignorado;
        if (nueva_)
            for (const char* cola : {"", "-journal", "-wal", "-shm"}) fs::remove(ruta_ + cola, ignorado);
    }
    std::string ruta_;
    bool nueva_; ///< came into being here and holds nothing yet
    Manija db_;
};

std::unique_ptr<Destino> destino(const std::string& conexion, bool reemplazar) {
    return std::make_unique<DestinoSqlite>(ruta_de(conexion), reemplazar);
}

} // namespace

const Volcado VOLCADO_SQLITE{"base.db", sacar, destino};

} // namespace quorvel::dbtools
