#pragma once
#include "platform/db/clsConexion.h"
#include "text/letras_utf8.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace quorvel {

/// Whether lines on an account must carry an auxiliary, of the account's column req_auxiliar.
[[nodiscard]] inline bool exige_auxiliar(const Value& req_auxiliar) {
    return recortar(req_auxiliar.text()) == "1";
}

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
