#pragma once
#include "platform/db/sqlite/sesion_sqlite.h"

namespace quorvel {

/// Reads its rows as they are asked for, so that the first page of a long list does not wait for the last.
class RecordsetSqlite final : public BufferedRecordset {
public:
    RecordsetSqlite(SesionSqlite& session, std::string sql, std::shared_ptr<const ResultColumns> columns)
        : BufferedRecordset(std::move(sql), std::move(columns)), session_(session) {}
    ~RecordsetSqlite() override { stop(); }
    RecordsetSqlite(const RecordsetSqlite&) = delete;
    RecordsetSqlite& operator=(const RecordsetSqlite&) = delete;
    /// Reads the rest and lets go of the statement.
    void complete_now();

protected:
    bool fetch(std::vector<Value>& cells) override;
    void read(const std::string& sql, std::vector<Value>& cells) override { (void)session_.read(sql, cells); }
    [[nodiscard]] std::string find_sql(const std::string& criteria) const override {
        return "select * from (" + sql_ + "\n) where " + criteria + " limit 1";
    }

private:
    void stop();
    SesionSqlite& session_;
    sqlite3_stmt* stmt_ = nullptr; ///< has further rows
};

} // namespace quorvel
