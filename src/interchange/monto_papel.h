#pragma once
#include <string>

namespace quorvel {

/// An amount as a paper carries it twice, read once.
struct MontoPapel {
    std::string cifra;  ///< SQL number literal
    std::string letras; ///< in capitals
};
/// @param total as shown or typed: "." only where thousands are grouped, at most two decimals; empty is 0
/// @throws std::invalid_argument, std::out_of_range in Spanish
[[nodiscard]] MontoPapel monto_papel(const std::string& total);

} // namespace quorvel
