#pragma once
#include "platform/db/clsConexion.h"

#include <memory>

namespace quorvel {

/// Columns of a result; an expression has no declared type, its first row tells.
struct ResultColumns {
    std::vector<ColumnInfo> info;
    std::vector<bool> declared;
};

/// A recordset that reads nothing before its first row is asked for, and keeps what it has read.
class BufferedRecordset : public Recordset {
public:
    [[nodiscard]] Field fields(std::string_view name) override;
    [[nodiscard]] bool eof() override;
    void MoveNext() override;
    /// Found: that row is current and MoveNext leads to the end. Not found: there is no current row.
    void FindFirst(const std::string& criteria) override;
    [[nodiscard]] bool nomatch() const override { return nomatch_; }
    [[nodiscard]] const std::vector<ColumnInfo>& columns() override;
    [[nodiscard]] Value at(std::size_t i) override;

protected:
    explicit BufferedRecordset(std::string sql, std::shared_ptr<const ResultColumns> columns)
        : sql_(std::move(sql)), columns_(std::move(columns)) {}
    /// Appends the cells of the next rows. @return false when there are no further rows
    virtual bool fetch(std::vector<Value>& cells) {
        read(sql_, cells);
        return false;
    }
    /// Reads what is left, before a change of the database would disturb it.
    void complete();
    /// Appends all rows' cells of a query.
    virtual void read(const std::string& sql, std::vector<Value>& cells) = 0;
    /// The query whose first row is the one that FindFirst looks for.
    [[nodiscard]] virtual std::string find_sql(const std::string& criteria) const = 0;

    std::string sql_;
    std::shared_ptr<const ResultColumns> columns_;

private:
    void load(std::size_t row);
    [[nodiscard]] const Value& cell(std::size_t i);
    std::vector<Value> cells_, found_;
    std::vector<ColumnInfo> resolved_;
    std::size_t row_ = 0;
    bool complete_ = false, searched_ = false, nomatch_ = false;
};

} // namespace quorvel
