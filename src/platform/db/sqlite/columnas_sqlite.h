#pragma once
#include "platform/db/buffered_recordset.h"

#include <sqlite3.h>

namespace quorvel {

[[nodiscard]] std::shared_ptr<const ResultColumns> sqlite_columns(sqlite3_stmt* stmt);
/// Column definitions of a table that takes the query's rows and compares their texts as the sources do.
[[nodiscard]] std::string definicion(sqlite3_stmt* stmt);
[[nodiscard]] Value sqlite_value(sqlite3_stmt* stmt, int column);

} // namespace quorvel
