#pragma once
#include "platform/db/buffered_recordset.h"

#include <libpq-fe.h>

namespace quorvel {

[[nodiscard]] std::shared_ptr<const ResultColumns> columnas(const PGresult* description);
/// Whether a result has these columns.
[[nodiscard]] bool same_columns(const ResultColumns& columns, const PGresult* rows);
[[nodiscard]] Value valor(const PGresult* rows, int row, int column);

} // namespace quorvel
