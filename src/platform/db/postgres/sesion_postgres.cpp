#include "platform/db/postgres/sesion_postgres.h"

#include "platform/db/literal_value.h"
#include "platform/db/postgres/columnas_postgres.h"

#include <cstring>

namespace quorvel {
namespace {

class RecordsetPostgres final : public BufferedRecordset {
public:
    RecordsetPostgres(SesionPostgres& session, std::string sql, std::shared_ptr<const ResultColumns> columns)
        : BufferedRecordset(std::move(sql), std::move(columns)), session_(session) {}

protected:
    void read(const std::string& sql, std::vector<Value>& cells) override {
        auto columns = session_.read(sql, cells);
        // a private table may have been made anew since the query was opened
        if (columns->info.size() != columns_->info.size()) columns_ = std::move(columns);
    }
    [[nodiscard]] std::string find_sql(const std::string& criteria) const override {
        std::string names; // a second column of one name would make the name ambiguous
        for (std::size_t i = 0; i < columns_->info.size(); ++i) {
            const std::string& name = columns_->info[i].name;
            bool repeated = false;
            for (std::size_t j = 0; j < i && !repeated; ++j) repeated = columns_->info[j].name == name;
            names += (i > 0 ? ",\"" : "\"") + name + (repeated ? "#" + std::to_string(i) : "") + '"';
        }
        return "select * from (" + sql_ + "\n) as hallado(" + names + ") where " + criteria + " limit 1";
    }

private:
    SesionPostgres& session_;
};

constexpr const char* SQLSTATE_PLAN_CHANGED = "0A000";
/// Sent around every statement of a transaction, so the server parses them once.
constexpr const char* GUARD[][2] = {{"guarda", "savepoint sentencia"},
                                    {"suelta", "release savepoint sentencia"}};
constexpr const char* SQLSTATE_NO_TABLE = "42P01";

Oid parameter_type(Tok kind) {
    constexpr Oid UNKNOWN = 0, INT8 = 20, DATE = 1082, NUMERIC = 1700;
    switch (kind) {
    case Tok::integer: return INT8;
    case Tok::decimal: return NUMERIC;
    case Tok::date: return DATE;
    default: return UNKNOWN; // the column's type, as for a literal
    }
}

bool good(const PGresult* r) {
    const ExecStatusType status = PQresultStatus(r);
    return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

std::string trimmed(const char* message) {
    std::string text = message == nullptr ? "" : message;
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) text.pop_back();
    return text;
}

} // namespace

SesionPostgres::SesionPostgres(std::string conexion) : conexion_(std::move(conexion)) {
    try {
        connect();
    } catch (...) {
        PQfinish(conn_);
        throw;
    }
}
SesionPostgres::~SesionPostgres() { PQfinish(conn_); }

void SesionPostgres::connect() {
    PQfinish(conn_);
    conn_ = PQconnectdb(conexion_.c_str());
    if (PQstatus(conn_) != CONNECTION_OK) {
        const std::string why = trimmed(PQerrorMessage(conn_));
        throw ErrorSesion("No se puede conectar con el servidor de la base de datos: " + why, "");
    }
    PQsetNoticeProcessor(
        conn_, [](void*, const char*) {}, nullptr);
    PQsetClientEncoding(conn_, "UTF8");
    for (const char* setting :
         {"set datestyle = 'ISO, YMD'", "set standard_conforming_strings = on", "set backslash_quote = off"})
        command(setting);
    for (const auto& [name, text] : GUARD) {
        const Result r(PQprepare(conn_, name, text, 0, nullptr));
        if (!good(r.get())) fail(r.get(), text);
    }
}

void SesionPostgres::forget() {
    cache_.clear([this](Statement& s) {
        if (!s.name.empty()) dropped_.push_back(s.name);
    });
}

bool SesionPostgres::in_transaction() const {
    const auto status = PQtransactionStatus(conn_);
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

void SesionPostgres::reconnect_if_lost() {
    if (PQstatus(conn_) == CONNECTION_OK) return;
    if (lost_in_transaction_) throw ErrorSesion("Se perdió la conexión con la base de datos", "");
    cache_.clear([](Statement&) {});
    dropped_.clear();
    connect();
}

void SesionPostgres::fail(const PGresult* r, const std::string& sql) const {
    std::string why = r != nullptr ? trimmed(PQresultErrorField(r, PG_DIAG_MESSAGE_PRIMARY)) : "";
    if (why.empty()) why = trimmed(PQerrorMessage(conn_));
    const char* state = r != nullptr ? PQresultErrorField(r, PG_DIAG_SQLSTATE) : nullptr;
    const std::string code = state != nullptr ? state : "";
    if (code == SQLSTATE_NO_TABLE) why.insert(0, "La base de datos no tiene una tabla que se necesita: ");
    throw ErrorSesion(why, sql, code);
}

void SesionPostgres::command(const char* text) {
    const Result r(PQexecParams(conn_, text, 0, nullptr, nullptr, nullptr, nullptr, 0));
    if (!good(r.get())) fail(r.get(), text);
}

template <class F> Result SesionPostgres::guarded(const std::string& sql, std::size_t commands, F&& send) {
    const bool guard = PQtransactionStatus(conn_) == PQTRANS_INTRANS;
    const bool was_in_transaction = in_transaction();
    const auto plain = [this](const char* name) {
        return PQsendQueryPrepared(conn_, name, 0, nullptr, nullptr, nullptr, 0) == 1;
    };
    bool sent = PQenterPipelineMode(conn_) == 1 && (!guard || plain("guarda")) && send() &&
                (!guard || plain("suelta")) && PQpipelineSync(conn_) == 1;
    const std::size_t wanted = guard ? commands : commands - 1; // the result that counts
    Result answer, error;
    std::size_t index = 0;
    int empty = 0;
    while (sent && PQstatus(conn_) == CONNECTION_OK) {
        Result r(PQgetResult(conn_));
        if (r == nullptr) {
            if (++empty > 1) break; // two in a row: the pipeline has nothing left
            ++index;
            continue;
        }
        empty = 0;
        const ExecStatusType status = PQresultStatus(r.get());
        if (status == PGRES_PIPELINE_SYNC) break;
        if (status == PGRES_PIPELINE_ABORTED) continue;
        if (!good(r.get())) {
            if (error == nullptr) error = std::move(r);
        } else if (index == wanted)
            answer = std::move(r);
    }
    if (PQstatus(conn_) == CONNECTION_OK && PQexitPipelineMode(conn_) == 0) sent = false;
    if (PQstatus(conn_) != CONNECTION_OK) {
        lost_in_transaction_ = was_in_transaction;
        fail(error.get(), sql);
    }
    if (error == nullptr && sent && answer != nullptr) return answer;
    const std::string refused = error == nullptr ? trimmed(PQerrorMessage(conn_)) : "";
    if (guard && PQtransactionStatus(conn_) == PQTRANS_INERROR) {
        command("rollback to savepoint sentencia");
        command("release savepoint sentencia");
    }
    if (error == nullptr) throw ErrorSesion(refused, sql);
    fail(error.get(), sql);
}

Result SesionPostgres::execute_plain(const std::string& text, const std::string& sql) {
    return guarded(sql, 1, [&] {
        return PQsendQueryParams(conn_, text.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0) == 1;
    });
}

void SesionPostgres::prepare(Statement& s, const std::string& sql) {
    for (const std::string& old : dropped_) (void)execute_plain("deallocate " + old, sql);
    dropped_.clear();
    const std::string name = "q" + std::to_string(++names_);
    std::vector<Oid> types;
    for (const Tok kind : s.kinds) types.push_back(parameter_type(kind));
    const Result description = guarded(sql, 2, [&] {
        return PQsendPrepare(conn_, name.c_str(), s.translation.text.c_str(), static_cast<int>(types.size()),
                             types.data()) == 1 &&
               PQsendDescribePrepared(conn_, name.c_str()) == 1;
    });
    s.name = name;
    s.columns = columnas(description.get());
}

SesionPostgres::Cache::Entry& SesionPostgres::acquire(const std::string& sql) {
    reconnect_if_lost();
    if (!skeleton_.scan(sql)) {
        (void)tokenize(sql); // tells what is wrong
        throw ErrorSesion("Sentencia mal escrita", sql);
    }
    if (auto* known = cache_.find(skeleton_)) return *known;
    Statement s;
    s.translation = translate(sql, Engine::postgres);
    std::vector<bool> lifted(skeleton_.literals().size());
    for (const std::size_t literal : s.translation.params) {
        lifted[literal] = true;
        s.kinds.push_back(skeleton_.literals()[literal].kind);
    }
    using Kind = Translation::Kind;
    if (s.translation.kind == Kind::query || s.translation.kind == Kind::statement) prepare(s, sql);
    return cache_.add(skeleton_, std::move(lifted), std::move(s), [this](Statement& old) {
        if (!old.name.empty()) dropped_.push_back(old.name);
    });
}

void SesionPostgres::arguments(const Statement& s) {
    scratch_.clear();
    scratch_.reserve(skeleton_.sql().size() + 16 * s.kinds.size()); // values point into it: it must not move
    values_.clear();
    for (const std::size_t i : s.translation.params) {
        const std::size_t at = scratch_.size();
        const std::string_view text = skeleton_.literal(i);
        switch (skeleton_.literals()[i].kind) {
        case Tok::date:
            if (!append_iso(text, scratch_))
                throw ErrorSesion("Fecha no válida: " + std::string(text), std::string(skeleton_.sql()));
            break;
        case Tok::text: append_text(text, scratch_); break;
        default: scratch_ += text;
        }
        scratch_ += '\0';
        values_.push_back(scratch_.data() + at);
    }
}

Result SesionPostgres::execute(Statement& s, const std::string& sql) {
    arguments(s);
    const auto send = [&] {
        return PQsendQueryPrepared(conn_, s.name.c_str(), static_cast<int>(values_.size()), values_.data(),
                                   nullptr, nullptr, 0) == 1;
    };
    try {
        return guarded(sql, 1, send);
    } catch (const ErrorSesion& e) {
        if (e.sqlstate != SQLSTATE_PLAN_CHANGED) throw;
    }
    dropped_.push_back(s.name); // a table of the query has been made anew with other columns
    prepare(s, sql);
    return guarded(sql, 1, send);
}

std::shared_ptr<const ResultColumns> SesionPostgres::read(const std::string& sql, std::vector<Value>& cells) {
    Statement& s = acquire(sql).payload;
    if (s.translation.kind != Translation::Kind::query)
        throw ErrorSesion("La sentencia no devuelve filas", sql);
    const Result rows = execute(s, sql);
    const int height = PQntuples(rows.get()), width = PQnfields(rows.get());
    cells.reserve(cells.size() + static_cast<std::size_t>(height) * static_cast<std::size_t>(width));
    for (int row = 0; row < height; ++row)
        for (int i = 0; i < width; ++i) cells.push_back(valor(rows.get(), row, i));
    return s.columns;
}

std::unique_ptr<Recordset> SesionPostgres::NewRecord(const std::string& sql) {
    try {
        const Statement& s = acquire(sql).payload;
        if (s.translation.kind != Translation::Kind::query)
            throw ErrorSesion("La sentencia no devuelve filas", sql);
        return std::make_unique<RecordsetPostgres>(*this, sql, s.columns);
    } catch (const ErrorSesion& e) {
        last_error_ = e.what();
        throw;
    }
}

int SesionPostgres::executesql(const std::string& sql) {
    try {
        Statement& s = acquire(sql).payload;
        using Kind = Translation::Kind;
        Result r;
        if (s.translation.kind == Kind::definition || s.translation.kind == Kind::select_into) {
            const std::string text = s.translation.text, table = s.translation.table;
            const bool into = s.translation.kind == Kind::select_into;
            forget();
            if (into) (void)execute_plain("drop table if exists pg_temp." + table, sql);
            r = execute_plain(into ? "create temp table " + table + " as " + text : text, sql);
        } else
            r = execute(s, sql);
        const std::string_view changed = PQcmdTuples(r.get());
        rows_ = changed.empty() ? 0 : Value(std::string(changed)).integer();
        if (PQresultStatus(r.get()) == PGRES_TUPLES_OK) rows_ = 0;
        last_error_.clear();
        return 1;
    } catch (const std::exception& e) {
        last_error_ = e.what();
        return 0;
    }
}

void SesionPostgres::BeginTrans() {
    lost_in_transaction_ = false;
    reconnect_if_lost();
    if (in_transaction()) throw ErrorSesion("Ya hay una transacción abierta", "begin");
    try {
        command("begin");
    } catch (const ErrorSesion&) {
        if (PQstatus(conn_) == CONNECTION_OK) throw;
        reconnect_if_lost(); // the server went away while nobody used the session
        command("begin");
    }
}

void SesionPostgres::CommitTrans() {
    if (PQstatus(conn_) != CONNECTION_OK) {
        lost_in_transaction_ = false;
        throw ErrorSesion("Se perdió la conexión con la base de datos", "commit");
    }
    const Result r(PQexecParams(conn_, "commit", 0, nullptr, nullptr, nullptr, nullptr, 0));
    if (!good(r.get())) {
        const bool lost = PQstatus(conn_) != CONNECTION_OK;
        if (!lost) rollback();
        fail(r.get(), "commit");
    }
    // the server answers "ROLLBACK" to the commit of a failed transaction
    if (std::strcmp(PQcmdStatus(r.get()), "COMMIT") != 0)
        throw ErrorSesion("La transacción fue deshecha", "commit");
}

void SesionPostgres::rollback() {
    lost_in_transaction_ = false;
    if (PQstatus(conn_) == CONNECTION_OK && in_transaction()) command("rollback");
}

} // namespace quorvel
