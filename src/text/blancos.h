#pragma once
#include <algorithm>
#include <string_view>

namespace quorvel {

/// Without blanks at both ends; a part of the given text.
[[nodiscard]] constexpr std::string_view sin_blancos(std::string_view t) {
    t.remove_prefix(std::min(t.find_first_not_of(' '), t.size()));
    return t.substr(0, t.find_last_not_of(' ') + 1);
}

} // namespace quorvel
