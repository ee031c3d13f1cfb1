#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace quorvel {

/// A number with what it counts: "1 línea", "1.234 líneas", "0 líneas".
[[nodiscard]] std::string cuantos(std::int64_t n, std::string_view uno, std::string_view varios);

} // namespace quorvel
