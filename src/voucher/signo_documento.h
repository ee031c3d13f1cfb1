#pragma once
#include <algorithm>
#include <array>
#include <string_view>

namespace quorvel {

/// Tax documents that take back what another one charged.
inline constexpr std::array<std::string_view, 3> NOTAS_CREDITO{"NOTA CREDITO", "N.C. ELECTRONICA",
                                                               "N.C. EXP. ELECT."};

/// Every line of these goes to the opposite side, and what they amount to is less, not more.
[[nodiscard]] constexpr bool es_nota_credito(std::string_view documento) {
    return std::ranges::find(NOTAS_CREDITO, documento) != NOTAS_CREDITO.end();
}

} // namespace quorvel
