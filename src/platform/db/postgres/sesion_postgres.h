#pragma once
#include "platform/db/buffered_recordset.h"
#include "platform/db/clsConexion.h"
#include "platform/db/statement_cache.h"
#include "platform/db/translator.h"

#include <libpq-fe.h>

namespace quorvel {

struct ClearResult {
    void operator()(PGresult* r) const { PQclear(r); }
};
using Result = std::unique_ptr<PGresult, ClearResult>;

/// A session on a PostgreSQL server. Its recordsets must not outlive it.
/// Within a transaction each statement stands behind a savepoint of its own, sent in the same round trip.
class SesionPostgres final : public clsConexion {
public:
    /// @param conexion "postgresql://…", several hosts and all options of libpq @throws ErrorSesion in
    /// Spanish
    explicit SesionPostgres(std::string conexion);
    ~SesionPostgres() override;
    SesionPostgres(const SesionPostgres&) = delete;
    SesionPostgres& operator=(const SesionPostgres&) = delete;

    [[nodiscard]] std::unique_ptr<Recordset> NewRecord(const std::string& sql) override;
    int executesql(const std::string& sql) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void rollback() override;
    [[nodiscard]] int TypeDB() const override { return 1; }
    [[nodiscard]] std::string Name() const override { return conexion_; }
    [[nodiscard]] std::string last_error() const override { return last_error_; }
    [[nodiscard]] std::int64_t rows_affected() const override { return rows_; }

    /// Appends the cells of all rows. @return the result's columns
    std::shared_ptr<const ResultColumns> read(const std::string& sql, std::vector<Value>& cells);

private:
    struct Statement {
        std::string name; ///< of the prepared statement, empty for definitions
        Translation translation;
        std::vector<Tok> kinds; ///< of the parameters
        std::shared_ptr<const ResultColumns> columns;
    };
    using Cache = StatementCache<Statement>;

    void connect();
    void forget();
    void reconnect_if_lost();
    [[nodiscard]] bool in_transaction() const;
    Cache::Entry& acquire(const std::string& sql);
    void prepare(Statement& s, const std::string& sql);
    Result execute(Statement& s, const std::string& sql);
    Result execute_plain(const std::string& text, const std::string& sql);
    /// Runs what send() sends, within a transaction behind a savepoint. @return the result of its last
    /// command
    template <class F> Result guarded(const std::string& sql, std::size_t commands, F&& send);
    void command(const char* text);
    void arguments(const Statement& s);
    [[noreturn]] void fail(const PGresult* r, const std::string& sql) const;

    std::string conexion_;
    PGconn* conn_ = nullptr;
    Cache cache_;
    Skeleton skeleton_;
    std::string scratch_, last_error_;
    std::vector<const char*> values_;
    std::vector<std::string>
        dropped_; ///< prepared statements that made room and are still known to the server
    std::int64_t rows_ = 0;
    std::uint64_t names_ = 0;
    bool lost_in_transaction_ = false;
};

} // namespace quorvel
