#include "platform/db/postgres/sesion_postgres.h"

#include "platform/db/literal_value.h"
#include "platform/db/postgres/columnas_postgres.h"
#include "platform/db/postgres/loose_scan.h"

#include <algorithm>
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
Oid parameter_type(Tok kind) {
    constexpr Oid UNKNOWN = 0, INT8 = 20, DATE = 1082, NUMERIC = 1700;
    switch (kind) {
    case Tok::integer: return INT8;
    case Tok::decimal: return NUMERIC;
    case Tok::date: return DATE;
    default: return UNKNOWN; // the column's type, as for a literal
    }
}

std::int64_t rows_changed(PGresult* r) {
    const std::string_view changed = PQresultStatus(r) == PGRES_TUPLES_OK ? "" : PQcmdTuples(r);
    return Value(std::string(changed)).integer();
}

} // namespace

SesionPostgres::SesionPostgres(const std::string& conexion) : server_(conexion) { server_.connect(); }

void SesionPostgres::drop(Statement& s) {
    if (!s.command.name.empty()) dropped_.push_back(std::exchange(s.command.name, {}));
    s.columns.reset();
}

void SesionPostgres::forget() {
    cache_.clear([this](Statement& s) { drop(s); });
}

bool SesionPostgres::in_transaction() const {
    const auto status = server_.transaction();
    return begin_due_ || status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

void SesionPostgres::reconnect_if_lost() {
    if (server_.alive()) return;
    if (lost_in_transaction_) throw SesionFallida("Se perdió la conexión con la base de datos", "");
    cache_.clear([](Statement&) {});
    dropped_.clear();
    server_.connect();
    if (lost_commit_ != 0) await_lost_commit();
}

void SesionPostgres::await_lost_commit() {
    // after a restart or on another host the number may be that of somebody else, who is not idle for long
    const std::string query = "select pid from pg_stat_activity where backend_type='client backend' and "
                              "state<>'idle' and pid<>pg_backend_pid() and pid=" +
                              std::to_string(lost_commit_);
    for (int i = 0; i < 20; ++i) {
        if (PQntuples(server_.command(query.c_str()).get()) == 0) {
            lost_commit_ = 0;
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    server_.disconnect(); // the next statement asks again
    throw SesionFallida("El servidor de la base de datos aún no termina el cambio anterior", query);
}

template <class F>
std::vector<Result> SesionPostgres::exchange(const std::string& sql, std::size_t commands, F&& queue,
                                             std::size_t* refused) {
    const bool inside = server_.transaction() == PQTRANS_INTRANS;
    const bool begin = begin_due_, guard = !strict_ && (begin || inside);
    const std::size_t before = (begin ? server_.begin_commands() : 0) + (guard ? 1 : 0),
                      all = before + commands + (guard ? 1 : 0);
    auto [answers, error, why] = server_.round_trip(all, [&] {
        return (!begin || server_.send_begin()) && (!guard || server_.send(ServerLink::GUARD)) && queue() &&
               (!guard || server_.send(ServerLink::RELEASE));
    });
    if (begin && answers.size() >= before) server_.began(answers);
    if (refused != nullptr) *refused = answers.size() - std::min(answers.size(), before);
    if (!server_.alive()) {
        lost_in_transaction_ = inside;
        server_.fail(error.get(), sql);
    }
    begin_due_ = false;
    if (error == nullptr && answers.size() == all) {
        if (guard) answers.pop_back();
        answers.erase(answers.begin(), answers.begin() + static_cast<std::ptrdiff_t>(before));
        return std::move(answers);
    }
    if (guard && server_.transaction() == PQTRANS_INERROR) {
        (void)server_.command("rollback to savepoint sentencia");
        (void)server_.command("release savepoint sentencia");
    }
    if (error == nullptr) throw ErrorSesion(why, sql);
    server_.fail(error.get(), sql);
}

Result SesionPostgres::execute_plain(const std::string& text, const std::string& sql) {
    return std::move(exchange(sql, 1, [&] { return server_.send_text(text); }).front());
}

void SesionPostgres::prepare(Statement& s, const std::string& sql) {
    for (const std::string& old : dropped_) (void)execute_plain("deallocate " + old, sql);
    dropped_.clear();
    ServerLink::Command fresh = s.command;
    if (!server_.pooled()) fresh.name = "q" + std::to_string(++names_);
    const auto answers = exchange(sql, 2, [&] { return server_.send_prepare(fresh); });
    s.command = std::move(fresh);
    s.columns = postgres_columns(answers.back().get());
}

bool SesionPostgres::due(const Statement& s) const {
    using Kind = Translation::Kind;
    if (s.columns != nullptr) return false;
    return s.translation.kind == Kind::query || (s.translation.kind == Kind::statement && !server_.pooled());
}

SesionPostgres::Cache::Entry& SesionPostgres::acquire(const std::string& sql) {
    if (server_.attention().asking()) throw ErrorSesion("La base de datos está ocupada", sql);
    reconnect_if_lost();
    if (!skeleton_.scan(sql)) {
        (void)tokenize(sql); // tells what is wrong
        throw ErrorSesion("Sentencia mal escrita", sql);
    }
    if (auto* known = cache_.find(skeleton_)) {
        if (due(known->payload)) prepare(known->payload, sql);
        return *known;
    }
    Statement s;
    s.translation = translate(sql, Engine::postgres);
    std::vector<bool> lifted(skeleton_.literals().size());
    for (const std::size_t literal : s.translation.params) {
        lifted[literal] = true;
        s.command.types.push_back(parameter_type(skeleton_.literals()[literal].kind));
    }
    s.command.text = s.translation.text;
    if (s.translation.kind == Translation::Kind::query)
        if (auto loose = loose_scan(s.command.text);
            loose && PQntuples(execute_plain(loose->indexed, sql).get()) > 0)
            s.command.text = std::move(loose->text);
    if (due(s)) prepare(s, sql);
    return cache_.add(skeleton_, std::move(lifted), std::move(s), [this](Statement& old) { drop(old); });
}

void SesionPostgres::arguments(const Statement& s) {
    scratch_.clear();
    scratch_.reserve(skeleton_.sql().size() +
                     16 * s.command.types.size()); // values point into it: it must not move
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
    const auto run = [&] {
        return std::move(exchange(sql, 1, [&] { return server_.send(s.command, values_); }).front());
    };
    try {
        return run();
    } catch (const ErrorSesion& e) {
        if (e.sqlstate != SQLSTATE_PLAN_CHANGED) throw;
        drop(s); // a table has been made anew with other columns
        if (server_.transaction() == PQTRANS_INERROR) {
            if (!first) throw;
            (void)server_.command("rollback");
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
        if (!(begin_due_ || (reads && outside)) || server_.alive()) throw;
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
            if (!same_columns(*s.columns, rows.get())) s.columns = postgres_columns(rows.get());
            const int height = PQntuples(rows.get()), width = PQnfields(rows.get());
            cells.reserve(cells.size() + static_cast<std::size_t>(height) * static_cast<std::size_t>(width));
            for (int row = 0; row < height; ++row)
                for (int i = 0; i < width; ++i) cells.push_back(postgres_value(rows.get(), row, i));
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
    if (into && server_.pooled() && !in_transaction())
        throw ErrorSesion("Una tabla de trabajo vive sólo dentro de una transacción", sql);
    forget();
    if (into) (void)execute_plain("drop table if exists pg_temp." + table, sql);
    const std::string ends = server_.pooled() ? " on commit drop as " : " as ";
    return execute_plain(into ? "create temp table " + table + ends + text : text, sql);
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
                return server_.send(known->payload.command, values_);
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
        return exchange("reserva", 1, [&] { return server_.send(ServerLink::RESERVE, values); });
    });
    return postgres_value(answers.front().get(), 0, 0).integer() == 1;
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
    if (!server_.alive()) {
        lost_in_transaction_ = begin_due_ = false;
        throw ErrorSesion("Se perdió la conexión con la base de datos", "commit");
    }
    if (broken_) {
        rollback();
        throw ErrorSesion("La transacción fue deshecha", "commit");
    }
    strict_ = false;
    if (std::exchange(begin_due_, false)) return; // nothing was asked of the server
    const int server = server_.process();
    const Result r = server_.execute(ServerLink::COMMIT);
    if (!server_.alive()) {
        lost_commit_ = server;
        throw CommitSinRespuesta("Se perdió la conexión con la base de datos", "commit");
    }
    if (!good(r.get())) {
        rollback();
        server_.fail(r.get(), "commit");
    }
    // the server answers "ROLLBACK" to the commit of a failed transaction
    if (std::strcmp(PQcmdStatus(r.get()), "COMMIT") != 0)
        throw ErrorSesion("La transacción fue deshecha", "commit");
}

void SesionPostgres::rollback() {
    lost_in_transaction_ = begin_due_ = broken_ = strict_ = false;
    if (server_.alive() && in_transaction()) (void)server_.command("rollback");
}

} // namespace quorvel
