#pragma once
#include "platform/db/buffered_recordset.h"

#include <libpq-fe.h>

namespace quorvel {

[[nodiscard]] std::shared_ptr<const ResultColumns> columnas(const PGresult* description);
[[nodiscard]] Value valor(const PGresult* rows, int row, int column);

} // namespace quorvel
