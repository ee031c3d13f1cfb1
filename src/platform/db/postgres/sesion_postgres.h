#pragma once
#include "platform/db/buffered_recordset.h"
#include "platform/db/clsConexion.h"
#include "platform/db/postgres/server_link.h"
#include "platform/db/statement_cache.h"
#include "platform/db/translator.h"

namespace quorvel {

/// A session on a PostgreSQL server. Its recordsets must not outlive it.
/// Within a transaction each statement stands behind a savepoint of its own, sent in the same round trip; a
/// strict transaction goes without. A transaction begins in the round trip of its first statement.
/// Behind a pooler private tables live as long as their transaction and are refused outside of one.
class SesionPostgres final : public clsConexion {
public:
    /// @param conexion "postgresql://…", several hosts, all options of libpq, and pool_mode=session or
    /// pool_mode=transaction, which is recognised by itself @throws ErrorSesion in Spanish
    explicit SesionPostgres(const std::string& conexion);

    [[nodiscard]] std::unique_ptr<Recordset> NewRecord(const std::string& sql) override;
    int executesql(const std::string& sql) override;
    [[nodiscard]] std::vector<std::int64_t> executesql_each(std::span<const std::string> sql) override;
    void BeginTrans() override;
    void begin_strict() override;
    [[nodiscard]] bool reserve(std::int64_t number) override;
    void CommitTrans() override;
    void rollback() override;
    [[nodiscard]] int TypeDB() const override { return 1; }
    [[nodiscard]] bool sends_whole_results() const override { return true; }
    [[nodiscard]] bool work_tables_end_with_transaction() const override { return server_.pooled(); }
    [[nodiscard]] std::string Name() const override { return server_.name(); }
    [[nodiscard]] std::string last_error() const override { return last_error_; }
    [[nodiscard]] bool session_failed() const override { return failed_; }
    [[nodiscard]] std::int64_t rows_affected() const override { return rows_; }
    void while_waiting(std::function<bool()> go_on) override { server_.attention().set(std::move(go_on)); }

    /// Appends the cells of all rows. @return the result's columns
    std::shared_ptr<const ResultColumns> read(const std::string& sql, std::vector<Value>& cells);

private:
    struct Statement {
        ServerLink::Command command; ///< without a name while it is not prepared
        Translation translation;
        std::shared_ptr<const ResultColumns> columns; ///< none while they are not asked for
    };
    using Cache = StatementCache<Statement>;

    void forget();
    void begin(bool strict);
    void reconnect_if_lost();
    /// Runs again what the server went away before: a transaction's first statement, and outside of one what
    /// only reads. Nothing is lost and nothing done twice.
    template <class F> auto first_again(F&& run, bool reads = false);
    void remember(const std::exception& e);
    /// The server may still be working on a commit whose answer was lost. @throws ErrorSesion while it is
    void await_lost_commit();
    [[nodiscard]] bool in_transaction() const;
    Cache::Entry& acquire(const std::string& sql);
    /// Whether the server is asked before the statement runs the first time.
    [[nodiscard]] bool due(const Statement& s) const;
    void prepare(Statement& s, const std::string& sql);
    void drop(Statement& s);
    Result execute(Statement& s, const std::string& sql);
    Result execute_plain(const std::string& text, const std::string& sql);
    /// Runs what queue() queues, behind the begin and the savepoint that are due. @return the results of its
    /// commands @param refused index of the first one that was not answered
    template <class F>
    std::vector<Result> exchange(const std::string& sql, std::size_t commands, F&& queue,
                                 std::size_t* refused = nullptr);
    Result run(const std::string& sql);
    std::vector<Result> run_each(std::span<const std::string> sql, std::size_t& at);
    void arguments(const Statement& s);

    ServerLink server_;
    Cache cache_;
    Skeleton skeleton_;
    std::string scratch_, last_error_;
    std::vector<const char*> values_;
    std::vector<std::string>
        dropped_; ///< prepared statements that made room and are still known to the server
    std::int64_t rows_ = 0;
    std::uint64_t names_ = 0;
    bool lost_in_transaction_ = false, begin_due_ = false, strict_ = false, broken_ = false, failed_ = false;
    int lost_commit_ = 0; ///< server process that was committing when the connection was lost
};

} // namespace quorvel
