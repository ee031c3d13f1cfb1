#pragma once
#include <array>
#include <cstddef>
#include <string_view>

namespace quorvel {

/// Cumulative code lengths of a chart's levels: the mask 9.99.999 gives 1, 3, 6 and then zeros.
[[nodiscard]] constexpr std::array<std::size_t, 11> largos_de_niveles(std::string_view mascara) {
    std::array<std::size_t, 11> largos{};
    std::size_t k = 0;
    for (const char c : mascara) {
        if (c != '.') {
            ++largos[k];
        } else {
            if (++k == largos.size()) break;
            largos[k] = largos[k - 1];
        }
    }
    return largos;
}

} // namespace quorvel
