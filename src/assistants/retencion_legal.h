#pragma once
#include <string_view>

namespace quorvel {

/// Percentage of a fee that is retained in a year, spelt as PORCENTAJES_RETENCION spells it.
/// Source: Ley 21.133, transitional article that raises the earlier 10 % year by year from 2020 on; 17 % is
/// reached in 2028 and stays.
[[nodiscard]] std::string_view porcentaje_legal(int anio);

} // namespace quorvel
