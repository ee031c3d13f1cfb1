#pragma once
#include "platform/db/attention.h"
#include "platform/db/postgres/server_text.h"

#include <libpq-fe.h>

#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace quorvel {

struct ClearResult {
    void operator()(PGresult* r) const { PQclear(r); }
};
using Result = std::unique_ptr<PGresult, ClearResult>;

[[nodiscard]] bool good(const PGresult* r);

/// A connection to a PostgreSQL server: what is sent in one round trip, and what comes back of it.
/// Behind a pooler each transaction may meet another server connection, so nothing is left on one: statements
/// go as text and have no name there.
class ServerLink {
public:
    /// A statement under the name by which this connection's server knows it.
    struct Command {
        std::string name, text;
        std::vector<Oid> types; ///< of the parameters
    };
    /// What every transaction needs: prepared on each connection, so that the server parses it once.
    static const Command BEGIN, COMMIT, RESERVE, GUARD, RELEASE;

    /// The results up to the first command that was refused, and why it was.
    struct Answers {
        std::vector<Result> results;
        Result error;    ///< none when the server did not tell
        std::string why; ///< what libpq tells then
    };

    /// @param conexion "postgresql://…", several hosts, all options of libpq and pool_mode (server_text)
    /// @throws ErrorSesion in Spanish
    explicit ServerLink(const std::string& conexion) : conexion_(conexion), text_(server_text(conexion)) {}

    /// Ends what was connected and connects anew. @throws SesionFallida in Spanish
    void connect();
    void disconnect() { conn_.reset(); }
    [[nodiscard]] bool alive() const { return PQstatus(conn_.get()) == CONNECTION_OK; }
    [[nodiscard]] PGTransactionStatusType transaction() const { return PQtransactionStatus(conn_.get()); }
    /// Whether no statement has a name on the server.
    [[nodiscard]] bool pooled() const { return pooled_; }
    /// The server's process that answers; behind a pooler the one that answered the last begin.
    [[nodiscard]] int process() const { return process_; }
    [[nodiscard]] const std::string& name() const { return conexion_; }
    /// Who is asked, while the server works, whether to go on.
    [[nodiscard]] Attention& attention() { return attention_; }

    /// Each queues a command of the round trip under way. @return false when the connection does not take it
    bool send(const Command& command, std::span<const char* const> values = {});
    bool send_text(const std::string& sql);
    /// Two commands: prepares and describes.
    bool send_prepare(const Command& command);
    /// As many commands as begin_commands() tells, whose results began() wants to see.
    bool send_begin();
    [[nodiscard]] std::size_t begin_commands() const { return pooled_ ? 2 : 1; }
    void began(std::span<const Result> results);

    /// Sends what queue() queues, and waits for the results. @param commands how many it queues
    template <class F> [[nodiscard]] Answers round_trip(std::size_t commands, F&& queue) {
        const bool pipeline = commands > 1;
        unnamed_ = nullptr;
        const bool queued = (!pipeline || PQenterPipelineMode(conn_.get()) == 1) && queue();
        return finish(commands, pipeline, queued);
    }
    /// One command without values, to its end and uninterrupted. @throws ErrorSesion
    Result command(const char* sql);
    /// The same for one of its own. @return the result also when the server refused it
    Result execute(const Command& command);
    /// @throws SesionFallida when no statement is to blame, ErrorSesion otherwise
    [[noreturn]] void fail(const PGresult* r, const std::string& sql) const;

private:
    struct Finish {
        void operator()(PGconn* c) const { PQfinish(c); }
    };

    [[nodiscard]] Answers finish(std::size_t commands, bool pipeline, bool queued);
    void collect(Answers& answers);
    /// The next result of what was sent; asks meanwhile whether to go on.
    [[nodiscard]] Result next_result();
    void interrupt();

    [[nodiscard]] int asked_process();

    std::string conexion_;
    ServerText text_;
    std::unique_ptr<PGconn, Finish> conn_;
    Attention attention_;
    bool pooled_ = false;
    int process_ = 0;
    const Command* unnamed_ = nullptr; ///< what the server read last in this round trip
};

} // namespace quorvel
