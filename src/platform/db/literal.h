#pragma once
#include "text/fecha.h"
#include "text/numeros.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

// The only way in which a value gets into a statement.

/// 'value' with its quotes doubled; bytes 0 become blanks.
[[nodiscard]] std::string sql_texto(std::string_view valor);
/// #mm/dd/yyyy#
[[nodiscard]] std::string sql_fecha(Fecha f);
/// #mm/dd/yyyy# or null
[[nodiscard]] std::string sql_fecha(std::optional<Fecha> f);
[[nodiscard]] std::string sql_numero(std::int64_t n);
/// With its decimals, "1950.5"
[[nodiscard]] std::string sql_numero(Decimal n);

} // namespace quorvel
