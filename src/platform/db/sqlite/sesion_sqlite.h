#pragma once
#include "platform/db/attention.h"
#include "platform/db/buffered_recordset.h"
#include "platform/db/clsConexion.h"
#include "platform/db/statement_cache.h"
#include "platform/db/translator.h"
#include "platform/files/engine_files.h"

#include <sqlite3.h>

namespace quorvel {

class RecordsetSqlite;

/// A session on one SQLite file. Its recordsets must not outlive it.
class SesionSqlite final : public clsConexion {
public:
    /// @throws ErrorSesion in Spanish: missing, not a database, locked
    SesionSqlite(std::string path, bool create);
    ~SesionSqlite() override;
    SesionSqlite(const SesionSqlite&) = delete;
    SesionSqlite& operator=(const SesionSqlite&) = delete;

    [[nodiscard]] std::unique_ptr<Recordset> NewRecord(const std::string& sql) override;
    int executesql(const std::string& sql) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void rollback() override;
    [[nodiscard]] int TypeDB() const override { return 2; }
    [[nodiscard]] std::string Name() const override { return path_; }
    [[nodiscard]] std::string last_error() const override { return last_error_; }
    [[nodiscard]] bool session_failed() const override { return failed_; }
    [[nodiscard]] std::int64_t rows_affected() const override { return rows_; }
    void while_waiting(std::function<bool()> go_on) override;

    /// Appends the cells of all rows. @return the result's columns
    std::shared_ptr<const ResultColumns> read(const std::string& sql, std::vector<Value>& cells);
    /// Appends the cells of the first rows. @param columns set to the result's columns
    /// @return the statement that has further rows and now belongs to the caller, nullptr when all are read
    sqlite3_stmt* read_first(const std::string& sql, std::vector<Value>& cells,
                             std::shared_ptr<const ResultColumns>& columns);
    /// Appends the next rows' cells. @return false when the statement has no further rows
    bool read_next(sqlite3_stmt* stmt, std::vector<Value>& cells) const;
    /// Recordsets that still read; they are completed before the session changes anything.
    std::vector<RecordsetSqlite*> reading;

private:
    struct Statement {
        sqlite3_stmt* stmt = nullptr;
        Translation translation;
        std::shared_ptr<const ResultColumns> columns;
    };
    using Cache = StatementCache<Statement>;

    void open(bool create);
    /// The log's file as it is now; nothing for a database that keeps none.
    [[nodiscard]] std::optional<FileId> log_id() const;
    /// Before a change: a file that was moved away would be written on, where nobody looks for it, and so
    /// would the log of the changes.
    /// @throws SesionFallida
    void require_in_place(const std::string& sql) const;
    /// @throws ErrorSesion when the engine has ended the transaction by itself: the rest of a change must not
    /// be made alone
    void require_transaction(const std::string& sql) const;
    void run(const std::string& command);
    void run(sqlite3_stmt* command) { step_all(command, sqlite3_sql(command)); }
    Cache::Entry& acquire(const std::string& sql);
    sqlite3_stmt* prepare(const std::string& text, const std::string& sql);
    void bind(const Statement& s, sqlite3_destructor_type texts = SQLITE_STATIC);
    /// Another program may have given a table further columns since the statement was prepared.
    static void refresh(Statement& s);
    void complete_reading();
    void step_all(sqlite3_stmt* stmt, const std::string& sql);
    void define(const std::string& text, const std::string& sql);
    void select_into(const Statement& s, const std::string& sql);
    void forget();
    void remember(const std::exception& e);
    [[noreturn]] void fail(const std::string& sql) const;

    std::string path_;
    sqlite3* db_ = nullptr;
    sqlite3_stmt *begin_ = nullptr, *commit_ = nullptr;
    Cache cache_;
    Attention attention_;
    Skeleton skeleton_;
    std::string scratch_, last_error_;
    std::optional<FileId> log_;
    std::int64_t rows_ = 0;
    bool failed_ = false, in_transaction_ = false;
};

} // namespace quorvel
