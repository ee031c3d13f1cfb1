#pragma once
#include "platform/db/clsConexion.h"

#include <functional>

namespace quorvel::apoyo {

/// A session that tells a watcher of each statement before it is sent. A watcher that throws stops it.
class SesionVigilada final : public clsConexion {
public:
    using Vigia = std::function<void(const std::string& sql)>;
    explicit SesionVigilada(std::unique_ptr<clsConexion> db) : db_(std::move(db)) {}
    Vigia antes = [](const std::string&) {};
    std::function<void()> tras_commit = [] {};

    std::unique_ptr<Recordset> NewRecord(const std::string& sql) override {
        antes(sql);
        return db_->NewRecord(sql);
    }
    int executesql(const std::string& sql) override {
        antes(sql);
        return db_->executesql(sql);
    }
    std::vector<std::int64_t> executesql_each(std::span<const std::string> sql) override {
        for (const std::string& una : sql) antes(una);
        return db_->executesql_each(sql);
    }
    bool reserve(std::int64_t number) override {
        antes("reserve");
        return db_->reserve(number);
    }
    void BeginTrans() override {
        antes("begin");
        db_->BeginTrans();
    }
    void begin_strict() override {
        antes("begin");
        db_->begin_strict();
    }
    void CommitTrans() override {
        antes("commit");
        db_->CommitTrans();
        tras_commit();
    }
    void rollback() override {
        antes("rollback");
        db_->rollback();
    }
    [[nodiscard]] int TypeDB() const override { return db_->TypeDB(); }
    [[nodiscard]] bool sends_whole_results() const override { return db_->sends_whole_results(); }
    [[nodiscard]] bool work_tables_end_with_transaction() const override {
        return db_->work_tables_end_with_transaction();
    }
    [[nodiscard]] std::string Name() const override { return db_->Name(); }
    [[nodiscard]] std::string last_error() const override { return db_->last_error(); }
    [[nodiscard]] bool session_failed() const override { return db_->session_failed(); }
    [[nodiscard]] std::int64_t rows_affected() const override { return db_->rows_affected(); }

private:
    std::unique_ptr<clsConexion> db_;
};

} // namespace quorvel::apoyo
