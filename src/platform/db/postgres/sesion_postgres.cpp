#include "platform/db/postgres/sesion_postgres.h"

#include "platform/db/literal_value.h"
#include "platform/db/postgres/columnas_postgres.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <thread>
#include <utility>

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
/// What every transaction needs, prepared so that the server parses it once.
constexpr const char* FRAME[][2] = {{"abre", "begin"},
                                    {"cierra", "commit"},
                                    {"reserva", "select pg_try_advisory_xact_lock($1)"},
                                    {"guarda", "savepoint sentencia"},
                                    {"suelta", "release savepoint sentencia"}};
constexpr const char* SQLSTATE_NO_TABLE = "42P01";
/// Beginnings of what no statement is to blame for: the server has no room or memory left, was shut down or
/// made a standby, cannot read its files or finds them damaged.
constexpr std::string_view SERVER_FAULTS[] = {"53", "57P", "25006", "58", "XX"};

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

std::int64_t rows_changed(PGresult* r) {
    const std::string_view changed = PQresultStatus(r) == PGRES_TUPLES_OK ? "" : PQcmdTuples(r);
    return Value(std::string(changed)).integer();
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
        throw SesionFallida("No se puede conectar con el servidor de la base de datos: " + why, "");
    }
    PQsetNoticeProcessor(
        conn_, [](void*, const char*) {}, nullptr);
    PQsetClientEncoding(conn_, "UTF8");
    for (const char* setting :
         {"set datestyle = 'ISO, YMD'", "set standard_conforming_strings = on", "set backslash_quote = off"})
        command(setting);
    for (const auto& [name, text] : FRAME) {
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
    return begin_due_ || status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

void SesionPostgres::reconnect_if_lost() {
    if (PQstatus(conn_) == CONNECTION_OK) return;
    if (lost_in_transaction_) throw SesionFallida("Se perdió la conexión con la base de datos", "");
    cache_.clear([](Statement&) {});
    dropped_.clear();
    connect();
    if (lost_commit_ != 0) await_lost_commit();
}

void SesionPostgres::await_lost_commit() {
    // after a restart or on another host the number may be that of somebody else, who is not idle for long
    const std::string query = "select pid from pg_stat_activity where backend_type='client backend' and "
                              "state<>'idle' and pid<>pg_backend_pid() and pid=" +
                              std::to_string(lost_commit_);
    for (int i = 0; i < 20; ++i) {
        const Result r(PQexecParams(conn_, query.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0));
        if (!good(r.get())) fail(r.get(), query);
        if (PQntuples(r.get()) == 0) {
            lost_commit_ = 0;
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    PQfinish(std::exchange(conn_, nullptr)); // the next statement asks again
    throw SesionFallida("El servidor de la base de datos aún no termina el cambio anterior", query);
}

void SesionPostgres::fail(const PGresult* r, const std::string& sql) const {
    std::string why = r != nullptr ? trimmed(PQresultErrorField(r, PG_DIAG_MESSAGE_PRIMARY)) : "";
    if (why.empty()) why = trimmed(PQerrorMessage(conn_));
    const char* state = r != nullptr ? PQresultErrorField(r, PG_DIAG_SQLSTATE) : nullptr;
    const std::string code = state != nullptr ? state : "";
    if (code == SQLSTATE_NO_TABLE) why.insert(0, "La base de datos no tiene una tabla que se necesita: ");
    if (PQstatus(conn_) != CONNECTION_OK ||
        std::ranges::any_of(SERVER_FAULTS, [&](std::string_view begin) { return code.starts_with(begin); }))
        throw SesionFallida(why, sql, code);
    throw ErrorSesion(why, sql, code);
}

void SesionPostgres::command(const char* text) {
    const Result r(PQexecParams(conn_, text, 0, nullptr, nullptr, nullptr, nullptr, 0));
    if (!good(r.get())) fail(r.get(), text);
}

Result SesionPostgres::next_result() {
    bool ended = false;
    while (attention_.wanted() && PQisBusy(conn_) == 1) {
        pollfd socket{PQsocket(conn_), POLLIN, 0};
        const bool heard = poll(&socket, 1, static_cast<int>(Attention::PAUSE.count())) > 0;
        if (heard && PQconsumeInput(conn_) == 0) break; // lost: the next call tells
        // a request that comes before the server has begun the statement is lost: it is made again
        if (ended ? !heard : (ended = attention_.stops())) interrupt();
    }
    return Result(PQgetResult(conn_)); // waits for what is left
}

void SesionPostgres::interrupt() {
    const std::unique_ptr<PGcancel, void (*)(PGcancel*)> request(PQgetCancel(conn_), PQfreeCancel);
    std::array<char, 256> why{};
    if (request) (void)PQcancel(request.get(), why.data(), static_cast<int>(why.size()));
}

bool SesionPostgres::send(const char* name) {
    return PQsendQueryPrepared(conn_, name, 0, nullptr, nullptr, nullptr, 0) == 1;
}

bool SesionPostgres::send(const Statement& s) {
    return PQsendQueryPrepared(conn_, s.name.c_str(), static_cast<int>(values_.size()), values_.data(),
                               nullptr, nullptr, 0) == 1;
}

std::vector<Result> SesionPostgres::collect(Result& error) {
    std::vector<Result> answers;
    for (int empty = 0; PQstatus(conn_) == CONNECTION_OK;) {
        Result r = next_result();
        if (r == nullptr) { // the end of one command; two in a row: there is nothing left
            if (++empty > 1 || PQpipelineStatus(conn_) == PQ_PIPELINE_OFF) break;
            continue;
        }
        empty = 0;
        const ExecStatusType status = PQresultStatus(r.get());
        if (status == PGRES_PIPELINE_SYNC) break;
        if (status == PGRES_PIPELINE_ABORTED) continue;
        if (good(r.get()))
            answers.push_back(std::move(r));
        else if (error == nullptr)
            error = std::move(r);
    }
    return answers;
}

template <class F>
std::vector<Result> SesionPostgres::exchange(const std::string& sql, std::size_t commands, F&& send_all,
                                             std::size_t* refused) {
    const bool inside = PQtransactionStatus(conn_) == PQTRANS_INTRANS;
    const bool begin = begin_due_, guard = !strict_ && (begin || inside);
    const std::size_t before = (begin ? 1 : 0) + (guard ? 1 : 0), all = before + commands + (guard ? 1 : 0);
    const bool pipeline = all > 1;
    const bool sent = (!pipeline || PQenterPipelineMode(conn_) == 1) && (!begin || send("abre")) &&
                      (!guard || send("guarda")) && send_all() && (!guard || send("suelta"));
    std::string why = sent ? "" : trimmed(PQerrorMessage(conn_));
    Result error;
    std::vector<Result> answers;
    if (pipeline ? PQpipelineSync(conn_) == 1 : sent) answers = collect(error);
    if (refused != nullptr) *refused = answers.size() - std::min(answers.size(), before);
    if (why.empty() && error == nullptr && answers.size() < all) why = trimmed(PQerrorMessage(conn_));
    if (pipeline && PQstatus(conn_) == CONNECTION_OK) (void)PQexitPipelineMode(conn_);
    if (PQstatus(conn_) != CONNECTION_OK) {
        lost_in_transaction_ = inside;
        fail(error.get(), sql);
    }
    begin_due_ = false;
    if (error == nullptr && answers.size() == all) {
        if (guard) answers.pop_back();
        answers.erase(answers.begin(), answers.begin() + static_cast<std::ptrdiff_t>(before));
        return answers;
    }
    if (guard && PQtransactionStatus(conn_) == PQTRANS_INERROR) {
        command("rollback to savepoint sentencia");
        command("release savepoint sentencia");
    }
    if (error == nullptr) throw ErrorSesion(why, sql);
    fail(error.get(), sql);
}

Result SesionPostgres::execute_plain(const std::string& text, const std::string& sql) {
    return std::move(exchange(sql, 1, [&] {
                         return PQsendQueryParams(conn_, text.c_str(), 0, nullptr, nullptr, nullptr, nullptr,
                                                  0) == 1;
                     }).front());
}

void SesionPostgres::prepare(Statement& s, const std::string& sql) {
    for (const std::string& old : dropped_) (void)execute_plain("deallocate " + old, sql);
    dropped_.clear();
    const std::string name = "q" + std::to_string(++names_);
    std::vector<Oid> types;
    for (const Tok kind : s.kinds) types.push_back(parameter_type(kind));
    const auto answers = exchange(sql, 2, [&] {
        return PQsendPrepare(conn_, name.c_str(), s.translation.text.c_str(), static_cast<int>(types.size()),
                             types.data()) == 1 &&
               PQsendDescribePrepared(conn_, name.c_str()) == 1;
    });
    s.name = name;
    s.columns = columnas(answers.back().get());
}

SesionPostgres::Cache::Entry& SesionPostgres::acquire(const std::string& sql) {
    if (attention_.asking()) throw ErrorSesion("La base de datos está ocupada", sql);
    reconnect_if_lost();
    if (!skeleton_.scan(sql)) {
        (void)tokenize(sql); // tells what is wrong
        throw ErrorSesion("Sentencia mal escrita", sql);
    }
    using Kind = Translation::Kind;
    const auto prepared = [](const Statement& s) {
        return s.translation.kind == Kind::query || s.translation.kind == Kind::statement;
    };
    if (auto* known = cache_.find(skeleton_)) {
        Statement& s = known->payload;
        if (s.name.empty() && prepared(s)) prepare(s, sql);
        return *known;
    }
    Statement s;
    s.translation = translate(sql, Engine::postgres);
    std::vector<bool> lifted(skeleton_.literals().size());
    for (const std::size_t literal : s.translation.params) {
        lifted[literal] = true;
        s.kinds.push_back(skeleton_.literals()[literal].kind);
    }
    if (prepared(s)) prepare(s, sql);
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
    const bool first = begin_due_;
    arguments(s);
    const auto run = [&] { return std::move(exchange(sql, 1, [&] { return send(s); }).front()); };
    try {
        return run();
    } catch (const ErrorSesion& e) {
        if (e.sqlstate != SQLSTATE_PLAN_CHANGED) throw;
        dropped_.push_back(std::exchange(s.name, {})); // a table has been made anew with other columns
        if (PQtransactionStatus(conn_) == PQTRANS_INERROR) {
            if (!first) throw;
            command("rollback");
            begin_due_ = true;
        }
    }
    prepare(s, sql);
    return run();
}

void SesionPostgres::remember(const std::exception& e) {
    last_error_ = e.what();
    failed_ = dynamic_cast<const SesionFallida*>(&e) != nullptr;
}

template <class F> auto SesionPostgres::first_again(F&& run, bool reads) {
    const bool outside = !in_transaction() && !lost_in_transaction_;
    try {
        return run();
    } catch (const ErrorSesion& e) {
        remember(e);
        broken_ = strict_;
        if (!(begin_due_ || (reads && outside)) || PQstatus(conn_) == CONNECTION_OK) throw;
    }
    broken_ = false;
    return run();
}

std::shared_ptr<const ResultColumns> SesionPostgres::read(const std::string& sql, std::vector<Value>& cells) {
    return first_again(
        [&] {
            Statement& s = acquire(sql).payload;
            if (s.translation.kind != Translation::Kind::query)
                throw ErrorSesion("La sentencia no devuelve filas", sql);
            const Result rows = execute(s, sql);
            const int height = PQntuples(rows.get()), width = PQnfields(rows.get());
            cells.reserve(cells.size() + static_cast<std::size_t>(height) * static_cast<std::size_t>(width));
            for (int row = 0; row < height; ++row)
                for (int i = 0; i < width; ++i) cells.push_back(valor(rows.get(), row, i));
            return s.columns;
        },
        true);
}

std::unique_ptr<Recordset> SesionPostgres::NewRecord(const std::string& sql) {
    return first_again(
        [&]() -> std::unique_ptr<Recordset> {
            const Statement& s = acquire(sql).payload;
            if (s.translation.kind != Translation::Kind::query)
                throw ErrorSesion("La sentencia no devuelve filas", sql);
            return std::make_unique<RecordsetPostgres>(*this, sql, s.columns);
        },
        true);
}

Result SesionPostgres::run(const std::string& sql) {
    Statement& s = acquire(sql).payload;
    using Kind = Translation::Kind;
    if (s.translation.kind != Kind::definition && s.translation.kind != Kind::select_into)
        return execute(s, sql);
    const std::string text = s.translation.text, table = s.translation.table;
    const bool into = s.translation.kind == Kind::select_into;
    forget();
    if (into) (void)execute_plain("drop table if exists pg_temp." + table, sql);
    return execute_plain(into ? "create temp table " + table + " as " + text : text, sql);
}

int SesionPostgres::executesql(const std::string& sql) {
    try {
        rows_ = rows_changed(first_again([&] { return run(sql); }).get());
        last_error_.clear();
        return 1;
    } catch (const std::exception& e) {
        remember(e);
        return 0;
    }
}

std::vector<Result> SesionPostgres::run_each(std::span<const std::string> sql, std::size_t& at) {
    for (at = 0; at < sql.size(); ++at) {
        const Statement& s = acquire(sql[at]).payload;
        if (s.translation.kind != Translation::Kind::statement)
            throw ErrorSesion("La sentencia no cambia filas", sql[at]);
        arguments(s);
    }
    at = 0;
    return exchange(
        sql.front(), sql.size(),
        [&] {
            return std::all_of(sql.begin(), sql.end(), [this](const std::string& one) {
                const auto* known = skeleton_.scan(one) ? cache_.find(skeleton_) : nullptr;
                if (known == nullptr) return false; // more statements than the session remembers
                arguments(known->payload);
                return send(known->payload);
            });
        },
        &at);
}

std::vector<std::int64_t> SesionPostgres::executesql_each(std::span<const std::string> sql) {
    if (!strict_ || sql.empty()) return clsConexion::executesql_each(sql);
    std::size_t at = 0;
    try {
        std::vector<std::int64_t> rows;
        for (const Result& r : first_again([&] { return run_each(sql, at); }))
            rows.push_back(rows_changed(r.get()));
        last_error_.clear();
        return rows;
    } catch (const std::exception& e) {
        remember(e);
        return std::vector<std::int64_t>(at);
    }
}

bool SesionPostgres::reserve(std::int64_t number) {
    constexpr std::int64_t OURS = std::int64_t{0x5156}
                                  << 48U; // numbers that other programs hold are not these
    const std::string key = std::to_string(OURS | number);
    const char* const values[] = {key.c_str()};
    const auto answers = first_again([&] {
        reconnect_if_lost();
        return exchange("reserva", 1, [&] {
            return PQsendQueryPrepared(conn_, "reserva", 1, values, nullptr, nullptr, 0) == 1;
        });
    });
    return valor(answers.front().get(), 0, 0).integer() == 1;
}

void SesionPostgres::begin(bool strict) {
    lost_in_transaction_ = false;
    reconnect_if_lost();
    if (in_transaction()) throw ErrorSesion("Ya hay una transacción abierta", "begin");
    begin_due_ = true;
    strict_ = strict;
    broken_ = false;
}

void SesionPostgres::BeginTrans() { begin(false); }
void SesionPostgres::begin_strict() { begin(true); }

void SesionPostgres::CommitTrans() {
    if (PQstatus(conn_) != CONNECTION_OK) {
        lost_in_transaction_ = begin_due_ = false;
        throw ErrorSesion("Se perdió la conexión con la base de datos", "commit");
    }
    if (broken_) {
        rollback();
        throw ErrorSesion("La transacción fue deshecha", "commit");
    }
    strict_ = false;
    if (std::exchange(begin_due_, false)) return; // nothing was asked of the server
    const int server = PQbackendPID(conn_);
    const Result r(PQexecPrepared(conn_, "cierra", 0, nullptr, nullptr, nullptr, 0));
    if (PQstatus(conn_) != CONNECTION_OK) {
        lost_commit_ = server;
        throw CommitSinRespuesta("Se perdió la conexión con la base de datos", "commit");
    }
    if (!good(r.get())) {
        rollback();
        fail(r.get(), "commit");
    }
    // the server answers "ROLLBACK" to the commit of a failed transaction
    if (std::strcmp(PQcmdStatus(r.get()), "COMMIT") != 0)
        throw ErrorSesion("La transacción fue deshecha", "commit");
}

void SesionPostgres::rollback() {
    lost_in_transaction_ = begin_due_ = broken_ = strict_ = false;
    if (PQstatus(conn_) == CONNECTION_OK && in_transaction()) command("rollback");
}

} // namespace quorvel
