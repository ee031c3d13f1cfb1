#include "platform/db/postgres/server_link.h"

#include "platform/db/clsConexion.h"
#include "platform/db/postgres/columnas_postgres.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace quorvel {
namespace {

/// A server that vanishes without a word (cable, power, firewall) is given up after twenty seconds; left
/// alone the operating system waits for hours. What the connection text says goes before.
constexpr const char* PATIENCE[][2] = {{"connect_timeout", "10"},
                                       {"keepalives_idle", "10"},
                                       {"keepalives_interval", "5"},
                                       {"keepalives_count", "2"},
                                       {"tcp_user_timeout", "20000"}};
constexpr const char* SQLSTATE_NO_TABLE = "42P01";
/// Beginnings of what no statement is to blame for: the server has no room or memory left, was shut down or
/// made a standby, cannot read its files or finds them damaged.
constexpr std::string_view SERVER_FAULTS[] = {"53", "57P", "25006", "58", "XX"};

/// What has a name on each server connection of its own.
const ServerLink::Command* const FRAME[] = {&ServerLink::BEGIN, &ServerLink::COMMIT, &ServerLink::RESERVE,
                                            &ServerLink::GUARD, &ServerLink::RELEASE};
constexpr const char* PROCESS = "select pg_backend_pid()";
/// What is set where a server starts otherwise; a pooler keeps both with its client.
constexpr struct {
    const char *name, *begins, *set;
} SETTINGS[] = {{"DateStyle", "ISO", "set datestyle = 'ISO, YMD'"},
                {"standard_conforming_strings", "on", "set standard_conforming_strings = on"}};

std::string trimmed(const char* message) {
    std::string text = message == nullptr ? "" : message;
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) text.pop_back();
    return text;
}

} // namespace

const ServerLink::Command ServerLink::BEGIN{"abre", "begin", {}}, ServerLink::COMMIT{"cierra", "commit", {}},
    ServerLink::RESERVE{"reserva", "select pg_try_advisory_xact_lock($1)", {}},
    ServerLink::GUARD{"guarda", "savepoint sentencia", {}},
    ServerLink::RELEASE{"suelta", "release savepoint sentencia", {}};

bool good(const PGresult* r) {
    const ExecStatusType status = PQresultStatus(r);
    return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

void ServerLink::connect() {
    std::vector<const char*> names, values;
    for (const auto& [name, value] : PATIENCE) {
        names.push_back(name);
        values.push_back(value);
    }
    names.insert(names.end(), {"dbname", "client_encoding", nullptr});
    values.insert(values.end(), {text_.libpq.c_str(), "UTF8", nullptr});
    disconnect();
    conn_.reset(PQconnectdbParams(names.data(), values.data(), 1));
    if (!alive()) {
        const std::string why = trimmed(PQerrorMessage(conn_.get()));
        throw SesionFallida("No se puede conectar con el servidor de la base de datos: " + why, "");
    }
    PQsetNoticeProcessor(
        conn_.get(), [](void*, const char*) {}, nullptr);
    for (const auto& [name, begins, set] : SETTINGS) {
        const char* const now = PQparameterStatus(conn_.get(), name);
        if (now == nullptr || !std::string_view(now).starts_with(begins)) (void)command(set);
    }
    process_ = PQbackendPID(conn_.get());
    // a pooler answers for a server's process whose number it does not tell
    pooled_ = text_.mode == PoolMode::transaction ||
              (text_.mode == PoolMode::recognised && asked_process() != process_);
    if (pooled_) return;
    for (const Command* frame : FRAME) {
        const Result r(PQprepare(conn_.get(), frame->name.c_str(), frame->text.c_str(), 0, nullptr));
        if (!good(r.get())) fail(r.get(), frame->text);
    }
}

int ServerLink::asked_process() {
    return static_cast<int>(postgres_value(command(PROCESS).get(), 0, 0).integer());
}

void ServerLink::fail(const PGresult* r, const std::string& sql) const {
    std::string why = r != nullptr ? trimmed(PQresultErrorField(r, PG_DIAG_MESSAGE_PRIMARY)) : "";
    if (why.empty()) why = trimmed(PQerrorMessage(conn_.get()));
    const char* state = r != nullptr ? PQresultErrorField(r, PG_DIAG_SQLSTATE) : nullptr;
    const std::string code = state != nullptr ? state : "";
    if (code == SQLSTATE_NO_TABLE) why.insert(0, "La base de datos no tiene una tabla que se necesita: ");
    if (!alive() ||
        std::ranges::any_of(SERVER_FAULTS, [&](std::string_view begin) { return code.starts_with(begin); }))
        throw SesionFallida(why, sql, code);
    throw ErrorSesion(why, sql, code);
}

Result ServerLink::command(const char* sql) {
    Result r(PQexecParams(conn_.get(), sql, 0, nullptr, nullptr, nullptr, nullptr, 0));
    if (!good(r.get())) fail(r.get(), sql);
    return r;
}

Result ServerLink::execute(const Command& command) {
    return Result(
        pooled_ ? PQexecParams(conn_.get(), command.text.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0)
                : PQexecPrepared(conn_.get(), command.name.c_str(), 0, nullptr, nullptr, nullptr, 0));
}

bool ServerLink::send(const Command& command, std::span<const char* const> values) {
    PGconn* const c = conn_.get();
    const int n = static_cast<int>(values.size());
    if (!pooled_)
        return PQsendQueryPrepared(c, command.name.c_str(), n, values.data(), nullptr, nullptr, 0) == 1;
    if (std::exchange(unnamed_, &command) == &command)
        return PQsendQueryPrepared(c, "", n, values.data(), nullptr, nullptr, 0) == 1;
    const Oid* const types = command.types.empty() ? nullptr : command.types.data();
    return PQsendQueryParams(c, command.text.c_str(), n, types, values.data(), nullptr, nullptr, 0) == 1;
}

bool ServerLink::send_text(const std::string& sql) {
    unnamed_ = nullptr;
    return PQsendQueryParams(conn_.get(), sql.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0) == 1;
}

bool ServerLink::send_prepare(const Command& command) {
    unnamed_ = nullptr;
    const char* const name = pooled_ ? "" : command.name.c_str();
    return PQsendPrepare(conn_.get(), name, command.text.c_str(), static_cast<int>(command.types.size()),
                         command.types.data()) == 1 &&
           PQsendDescribePrepared(conn_.get(), name) == 1;
}

bool ServerLink::send_begin() { return send(BEGIN) && (!pooled_ || send_text(PROCESS)); }

void ServerLink::began(std::span<const Result> results) {
    if (pooled_) process_ = static_cast<int>(postgres_value(results[1].get(), 0, 0).integer());
}

ServerLink::Answers ServerLink::finish(std::size_t commands, bool pipeline, bool queued) {
    Answers answers;
    if (!queued) answers.why = trimmed(PQerrorMessage(conn_.get()));
    if (pipeline ? PQpipelineSync(conn_.get()) == 1 : queued) collect(answers);
    if (answers.why.empty() && answers.error == nullptr && answers.results.size() < commands)
        answers.why = trimmed(PQerrorMessage(conn_.get()));
    if (pipeline && alive()) (void)PQexitPipelineMode(conn_.get());
    return answers;
}

void ServerLink::collect(Answers& answers) {
    for (int empty = 0; alive();) {
        Result r = next_result();
        if (r == nullptr) { // the end of one command; two in a row: there is nothing left
            if (++empty > 1 || PQpipelineStatus(conn_.get()) == PQ_PIPELINE_OFF) break;
            continue;
        }
        empty = 0;
        const ExecStatusType status = PQresultStatus(r.get());
        if (status == PGRES_PIPELINE_SYNC) break;
        if (status == PGRES_PIPELINE_ABORTED) continue;
        if (good(r.get()))
            answers.results.push_back(std::move(r));
        else if (answers.error == nullptr)
            answers.error = std::move(r);
    }
}

Result ServerLink::next_result() {
    bool ended = false;
    while (attention_.wanted() && PQisBusy(conn_.get()) == 1) {
        pollfd socket{PQsocket(conn_.get()), POLLIN, 0};
        const bool heard = poll(&socket, 1, static_cast<int>(Attention::PAUSE.count())) > 0;
        if (heard && PQconsumeInput(conn_.get()) == 0) break; // lost: the next call tells
        // a request that comes before the server has begun the statement is lost: it is made again
        if (ended ? !heard : (ended = attention_.stops())) interrupt();
    }
    return Result(PQgetResult(conn_.get())); // waits for what is left
}

void ServerLink::interrupt() {
    const std::unique_ptr<PGcancel, void (*)(PGcancel*)> request(PQgetCancel(conn_.get()), PQfreeCancel);
    std::array<char, 256> why{};
    if (request) (void)PQcancel(request.get(), why.data(), static_cast<int>(why.size()));
}

} // namespace quorvel
