#pragma once
#include "platform/db/attention.h"

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
class ServerLink {
public:
    /// What every transaction needs: prepared on each connection, so that the server parses it once.
    static constexpr const char *BEGIN = "abre", *COMMIT = "cierra", *RESERVE = "reserva", *GUARD = "guarda",
                                *RELEASE = "suelta";

    /// The results up to the first command that was refused, and why it was.
    struct Answers {
        std::vector<Result> results;
        Result error;    ///< none when the server did not tell
        std::string why; ///< what libpq tells then
    };

    /// @param conexion "postgresql://…", several hosts and all options of libpq
    explicit ServerLink(std::string conexion) : conexion_(std::move(conexion)) {}

    /// Ends what was connected and connects anew. @throws SesionFallida in Spanish
    void connect();
    void disconnect() { conn_.reset(); }
    [[nodiscard]] bool alive() const { return PQstatus(conn_.get()) == CONNECTION_OK; }
    [[nodiscard]] PGTransactionStatusType transaction() const { return PQtransactionStatus(conn_.get()); }
    /// The server's process that answers.
    [[nodiscard]] int process() const { return PQbackendPID(conn_.get()); }
    [[nodiscard]] const std::string& name() const { return conexion_; }
    /// Who is asked, while the server works, whether to go on.
    [[nodiscard]] Attention& attention() { return attention_; }

    /// Each queues a command of the round trip under way. @return false when the connection does not take it
    bool send(const char* prepared, std::span<const char* const> values = {});
    bool send_text(const std::string& sql);
    /// Two commands: prepares and describes.
    bool send_prepare(const char* name, const std::string& sql, std::span<const Oid> types);

    /// Sends what queue() queues, and waits for the results. @param commands how many it queues
    template <class F> [[nodiscard]] Answers round_trip(std::size_t commands, F&& queue) {
        const bool pipeline = commands > 1;
        const bool queued = (!pipeline || PQenterPipelineMode(conn_.get()) == 1) && queue();
        return finish(commands, pipeline, queued);
    }
    /// One command without values, to its end and uninterrupted. @throws ErrorSesion
    Result command(const char* sql);
    /// The same for a prepared one. @return the result also when the server refused it
    Result execute(const char* prepared);
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

    std::string conexion_;
    std::unique_ptr<PGconn, Finish> conn_;
    Attention attention_;
};

} // namespace quorvel
