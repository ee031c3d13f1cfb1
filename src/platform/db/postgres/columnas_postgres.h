#pragma once
#include "platform/db/buffered_recordset.h"

#include <libpq-fe.h>

namespace quorvel {

[[nodiscard]] std::shared_ptr<const ResultColumns> postgres_columns(const PGresult* description);
/// Whether a result has these columns.
[[nodiscard]] bool same_columns(const ResultColumns& columns, const PGresult* rows);
[[nodiscard]] Value postgres_value(const PGresult* rows, int row, int column);

} // namespace quorvel
