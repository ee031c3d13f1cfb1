#pragma once
#include <string>
#include <string_view>

namespace quorvel::ui {

/// One code point as UTF-8.
[[nodiscard]] inline std::string utf8(char32_t c) {
    std::string s;
    const auto add = [&s](char32_t b) { s += static_cast<char>(b); };
    if (c < 0x80) {
        add(c);
    } else if (c < 0x800) {
        add(0xC0 | (c >> 6));
        add(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        add(0xE0 | (c >> 12));
        add(0x80 | ((c >> 6) & 0x3F));
        add(0x80 | (c & 0x3F));
    } else {
        add(0xF0 | (c >> 18));
        add(0x80 | ((c >> 12) & 0x3F));
        add(0x80 | ((c >> 6) & 0x3F));
        add(0x80 | (c & 0x3F));
    }
    return s;
}

/// Code points of a well-formed UTF-8 text.
[[nodiscard]] inline std::u32string code_points(std::string_view s) {
    std::u32string out;
    for (std::size_t i = 0; i < s.size();) {
        const auto b = static_cast<unsigned char>(s[i++]);
        int more = b < 0x80 ? 0 : b < 0xE0 ? 1 : b < 0xF0 ? 2 : 3;
        char32_t c = more == 0 ? b : b & (0x3F >> more);
        for (; more > 0 && i < s.size(); --more) c = (c << 6) | (static_cast<unsigned char>(s[i++]) & 0x3F);
        out += c;
    }
    return out;
}

/// Takes the last code point away.
inline void drop_last(std::string& s) {
    while (!s.empty() && (static_cast<unsigned char>(s.back()) & 0xC0) == 0x80) s.pop_back();
    if (!s.empty()) s.pop_back();
}

} // namespace quorvel::ui
