#include "platform/db/sqlite/sesion_sqlite.h"

#include "platform/db/literal_value.h"
#include "platform/db/sqlite/columnas_sqlite.h"
#include "platform/db/sqlite/file_fault.h"
#include "platform/db/sqlite/open_file.h"
#include "platform/db/sqlite/recordset_sqlite.h"
#include "platform/files/sha256.h"
#include "text/letras_utf8.h"

#include <charconv>
#include <cstring>
#include <filesystem>
#include <utility>

namespace quorvel {
namespace {

/// Gives the statement back when it has been used, on whatever way.
struct Reset {
    sqlite3_stmt* stmt;
    ~Reset() { sqlite3_reset(stmt); }
};

void changed(sqlite3_context* context, sqlite3_value* value, std::string (*change)(std::string_view)) {
    if (sqlite3_value_type(value) == SQLITE_NULL) return sqlite3_result_null(context);
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    const std::string result = change({text, static_cast<std::size_t>(sqlite3_value_bytes(value))});
    sqlite3_result_text(context, result.data(), static_cast<int>(result.size()), SQLITE_TRANSIENT);
}
void upper(sqlite3_context* context, int, sqlite3_value** values) { changed(context, *values, mayusculas); }
void lower(sqlite3_context* context, int, sqlite3_value** values) { changed(context, *values, minusculas); }
void sha256_hex(sqlite3_context* context, int, sqlite3_value** values) { changed(context, *values, sha256); }

} // namespace

SesionSqlite::SesionSqlite(std::string path, bool create) : path_(std::move(path)) {
    try {
        open(create);
    } catch (...) {
        sqlite3_close(db_);
        throw;
    }
}

SesionSqlite::~SesionSqlite() {
    forget();
    sqlite3_finalize(begin_);
    sqlite3_finalize(commit_);
    sqlite3_close(db_);
}

void SesionSqlite::open(bool create) {
    std::error_code why;
    if (!create && !std::filesystem::exists(path_, why) && !why)
        throw ErrorSesion("No existe la base de datos " + path_, "");
    const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    if (open_file(path_, flags, &db_) != SQLITE_OK)
        throw SesionFallida("No se puede abrir la base de datos " + path_ + ": " + engine_reason(db_), "");
    sqlite3_extended_result_codes(db_, 1);
    sqlite3_busy_timeout(db_, 5000);
    sqlite3_db_config(db_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(db_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    constexpr int PURE = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    sqlite3_create_function(db_, "upper", 1, PURE, nullptr, upper, nullptr, nullptr);
    sqlite3_create_function(db_, "lower", 1, PURE, nullptr, lower, nullptr, nullptr);
    sqlite3_create_function(db_, "sha256_hex", 1, PURE, nullptr, sha256_hex, nullptr, nullptr);
    if (sqlite3_exec(db_, "select count(*) from sqlite_master", nullptr, nullptr, nullptr) != SQLITE_OK) {
        const int code = sqlite3_errcode(db_) & 0xFF;
        if (code == SQLITE_NOTADB) throw ErrorSesion("El archivo " + path_ + " no es una base de datos", "");
        if (code == SQLITE_BUSY || code == SQLITE_LOCKED) fail("");
        throw SesionFallida("No se puede abrir la base de datos " + path_ + ": " + engine_reason(db_), "");
    }
    if (sqlite3_db_readonly(db_, "main") == 1)
        throw ErrorSesion("La base de datos " + path_ + " es de solo lectura", "");
    // An automatic index hashes texts with their trailing blanks and loses rows of a join. What is sorted in
    // memory as a whole asks nobody meanwhile whether to go on; files take it in parts that fit the cache.
    for (const char* pragma : {"pragma journal_mode=wal", "pragma synchronous=full", "pragma foreign_keys=on",
                               "pragma automatic_index=off", "pragma temp_store=file"})
        run(pragma);
    run("select count(*) from sqlite_master"); // a new file has its log from the first reading on
    log_ = log_id();
    begin_ = prepare("begin immediate", "begin");
    commit_ = prepare("commit", "commit");
}

std::optional<FileId> SesionSqlite::log_id() const {
    const char* const file = sqlite3_db_filename(db_, "main");
    return file == nullptr ? std::nullopt : file_id(sqlite3_filename_wal(file));
}

void SesionSqlite::fail(const std::string& sql) const {
    const int code = sqlite3_errcode(db_) & 0xFF;
    const std::string description = engine_reason(db_);
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED)
        throw ErrorSesion("La base de datos " + path_ + " está bloqueada por otro programa: " + description,
                          sql);
    if (const std::string text = file_fault(db_, path_); !text.empty()) throw SesionFallida(text, sql);
    constexpr std::string_view MISSING = "no such table: ";
    if (description.starts_with(MISSING))
        throw ErrorSesion(
            "La base de datos " + path_ + " no tiene la tabla " + description.substr(MISSING.size()), sql);
    throw ErrorSesion(description, sql);
}

void SesionSqlite::require_in_place(const std::string& sql) const {
    int moved = 0;
    if (sqlite3_file_control(db_, "main", SQLITE_FCNTL_HAS_MOVED, &moved) != SQLITE_OK || moved == 0) {
        if (log_ == log_id()) return;
        throw SesionFallida("Otro programa quitó el registro de cambios de la base de datos " + path_ +
                                ": no se graba nada hasta que salga y entre de nuevo",
                            sql);
    }
    std::error_code why;
    const bool another = std::filesystem::exists(path_, why);
    if (why)
        throw SesionFallida(
            "No se puede llegar a la base de datos " + path_ + ": " + std::strerror(why.value()), sql);
    throw SesionFallida(another ? "Hay otro archivo en el lugar de la base de datos " + path_ +
                                      ": no se graba en ninguno hasta que vuelva el anterior"
                                : "Ya no está en su lugar la base de datos " + path_ +
                                      ": no se graba nada hasta que vuelva",
                        sql);
}

void SesionSqlite::require_transaction(const std::string& sql) const {
    if (in_transaction_ && sqlite3_get_autocommit(db_) != 0)
        throw ErrorSesion("La transacción fue deshecha", sql);
}

void SesionSqlite::run(const std::string& command) {
    if (sqlite3_exec(db_, command.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fail(command);
}

sqlite3_stmt* SesionSqlite::prepare(const std::string& text, const std::string& sql) {
    sqlite3_stmt* stmt = nullptr;
    const int length = static_cast<int>(text.size()) + 1;
    if (sqlite3_prepare_v3(db_, text.c_str(), length, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr) != SQLITE_OK)
        fail(sql);
    return stmt;
}

SesionSqlite::Cache::Entry& SesionSqlite::acquire(const std::string& sql) {
    if (attention_.asking()) throw ErrorSesion("La base de datos está ocupada", sql);
    if (!skeleton_.scan(sql)) {
        (void)tokenize(sql); // tells what is wrong
        throw ErrorSesion("Sentencia mal escrita", sql);
    }
    if (auto* known = cache_.find(skeleton_)) {
        Statement& s = known->payload;
        const bool taken = s.stmt == nullptr && s.translation.kind != Translation::Kind::definition;
        if (taken) s.stmt = prepare(s.translation.text, sql);
        return *known;
    }
    Statement s;
    s.translation = translate(sql, Engine::sqlite);
    std::vector<bool> lifted(skeleton_.literals().size());
    for (const std::size_t literal : s.translation.params) lifted[literal] = true;
    if (s.translation.kind != Translation::Kind::definition) {
        s.stmt = prepare(s.translation.text, sql);
        s.columns = sqlite_columns(s.stmt);
    }
    return cache_.add(skeleton_, std::move(lifted), std::move(s),
                      [](Statement& old) { sqlite3_finalize(old.stmt); });
}

void SesionSqlite::bind(const Statement& s, sqlite3_destructor_type texts) {
    scratch_.clear();
    scratch_.reserve(skeleton_.sql().size() + 16); // bound texts point into it: it must not move
    int n = 0;
    for (const std::size_t i : s.translation.params) {
        const std::string_view text = skeleton_.literal(i);
        const char* const end = text.data() + text.size();
        ++n;
        switch (skeleton_.literals()[i].kind) {
        case Tok::integer: {
            std::int64_t value = 0;
            std::from_chars(text.data(), end, value);
            sqlite3_bind_int64(s.stmt, n, value);
            break;
        }
        case Tok::decimal: {
            double value = 0;
            std::from_chars(text.data(), end, value);
            sqlite3_bind_double(s.stmt, n, value);
            break;
        }
        case Tok::date: {
            const std::size_t at = scratch_.size();
            if (!append_iso(text, scratch_))
                throw ErrorSesion("Fecha no válida: " + std::string(text), std::string(skeleton_.sql()));
            sqlite3_bind_text(s.stmt, n, scratch_.data() + at, 10, texts);
            break;
        }
        default: {
            const std::string_view inside = text.substr(1, text.size() - 2);
            if (inside.find('\'') == std::string_view::npos) {
                sqlite3_bind_text(s.stmt, n, inside.data(), static_cast<int>(inside.size()), texts);
                break;
            }
            const std::size_t at = scratch_.size();
            append_text(text, scratch_);
            sqlite3_bind_text(s.stmt, n, scratch_.data() + at, static_cast<int>(scratch_.size() - at), texts);
        }
        }
    }
}

void SesionSqlite::step_all(sqlite3_stmt* stmt, const std::string& sql) {
    const Reset reset{stmt};
    int code;
    while ((code = sqlite3_step(stmt)) == SQLITE_ROW) {
    }
    if (code != SQLITE_DONE) fail(sql);
}

void SesionSqlite::refresh(Statement& s) {
    const auto width = static_cast<std::size_t>(sqlite3_column_count(s.stmt));
    if (width != s.columns->info.size()) s.columns = sqlite_columns(s.stmt);
}

std::shared_ptr<const ResultColumns> SesionSqlite::read(const std::string& sql, std::vector<Value>& cells) {
    Statement& s = acquire(sql).payload;
    if (s.stmt == nullptr) throw ErrorSesion("La sentencia no devuelve filas", sql);
    bind(s);
    const Reset reset{s.stmt};
    int code;
    while ((code = sqlite3_step(s.stmt)) == SQLITE_ROW) {
        const int width = sqlite3_data_count(s.stmt);
        for (int i = 0; i < width; ++i) cells.push_back(sqlite_value(s.stmt, i));
    }
    if (code != SQLITE_DONE) fail(sql);
    refresh(s);
    return s.columns;
}

sqlite3_stmt* SesionSqlite::read_first(const std::string& sql, std::vector<Value>& cells,
                                       std::shared_ptr<const ResultColumns>& columns) {
    Statement& s = acquire(sql).payload;
    if (s.stmt == nullptr) throw ErrorSesion("La sentencia no devuelve filas", sql);
    bind(s, SQLITE_TRANSIENT);
    const bool further = read_next(s.stmt, cells);
    refresh(s);
    columns = s.columns;
    return further ? std::exchange(s.stmt, nullptr) : nullptr;
}

bool SesionSqlite::read_next(sqlite3_stmt* stmt, std::vector<Value>& cells) const {
    constexpr int AT_ONCE = 256;
    int code = SQLITE_ROW;
    for (int n = 0; n < AT_ONCE && (code = sqlite3_step(stmt)) == SQLITE_ROW; ++n) {
        const int width = sqlite3_data_count(stmt);
        for (int i = 0; i < width; ++i) cells.push_back(sqlite_value(stmt, i));
    }
    if (code == SQLITE_ROW) return true;
    const Reset reset{stmt};
    if (code != SQLITE_DONE) fail(sqlite3_sql(stmt));
    return false;
}

void SesionSqlite::complete_reading() {
    while (!reading.empty()) reading.back()->complete_now();
}

std::unique_ptr<Recordset> SesionSqlite::NewRecord(const std::string& sql) {
    try {
        const Statement& s = acquire(sql).payload;
        if (s.translation.kind != Translation::Kind::query)
            throw ErrorSesion("La sentencia no devuelve filas", sql);
        return std::make_unique<RecordsetSqlite>(*this, sql, s.columns);
    } catch (const ErrorSesion& e) {
        remember(e);
        throw;
    }
}

void SesionSqlite::remember(const std::exception& e) {
    last_error_ = e.what();
    failed_ = dynamic_cast<const SesionFallida*>(&e) != nullptr;
}

int SesionSqlite::executesql(const std::string& sql) {
    try {
        complete_reading();
        require_transaction(sql);
        const Statement& s = acquire(sql).payload;
        using Kind = Translation::Kind;
        if (!in_transaction_ && s.translation.kind != Kind::select_into) require_in_place(sql);
        if (s.translation.kind == Kind::definition) {
            const std::string text = s.translation.text;
            define(text, sql);
        } else if (s.translation.kind == Kind::select_into) {
            select_into(s, sql);
        } else {
            bind(s);
            step_all(s.stmt, sql);
            rows_ = s.translation.kind == Kind::statement ? sqlite3_changes64(db_) : 0;
        }
        last_error_.clear();
        return 1;
    } catch (const std::exception& e) {
        remember(e);
        return 0;
    }
}

void SesionSqlite::define(const std::string& text, const std::string& sql) {
    forget();
    sqlite3_stmt* stmt = prepare(text, sql);
    struct Finalize {
        sqlite3_stmt* stmt;
        ~Finalize() { sqlite3_finalize(stmt); }
    } const finalize{stmt};
    step_all(stmt, sql);
    rows_ = 0;
}

void SesionSqlite::select_into(const Statement& s, const std::string& sql) {
    // "create table … as" would forget the columns' types and with them how their texts compare
    const std::string table = "temp." + s.translation.table;
    const std::string columns = definicion(s.stmt);
    const std::string query = s.translation.text;
    define("drop table if exists " + table, sql);
    define("create table " + table + "(" + columns + ")", sql);
    define("insert into " + table + " " + query, sql);
    rows_ = sqlite3_changes64(db_);
}

void SesionSqlite::while_waiting(std::function<bool()> go_on) {
    constexpr int STEPS = 2000; // of the engine's own machine: well under a millisecond
    attention_.set(std::move(go_on));
    const auto ask = [](void* attention) { return static_cast<Attention*>(attention)->stops() ? 1 : 0; };
    sqlite3_progress_handler(db_, attention_.wanted() ? STEPS : 0, ask, &attention_);
}

void SesionSqlite::forget() {
    cache_.clear([](Statement& s) { sqlite3_finalize(s.stmt); });
}

void SesionSqlite::BeginTrans() {
    complete_reading();
    require_in_place("begin");
    run(begin_);
    in_transaction_ = true;
}

void SesionSqlite::CommitTrans() {
    try {
        complete_reading();
        require_transaction("commit");
        require_in_place("commit");
        run(commit_);
        in_transaction_ = false;
    } catch (...) {
        rollback();
        throw;
    }
}

void SesionSqlite::rollback() {
    in_transaction_ = false;
    if (sqlite3_get_autocommit(db_) != 0) return;
    try {
        complete_reading();
    } catch (const ErrorSesion&) { // whoever reads on is told then; the change must not stay for it
    }
    run("rollback");
}

} // namespace quorvel
