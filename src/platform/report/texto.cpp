#include "platform/report/texto.h"

#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel::report {

namespace {
constexpr double SMALLEST = 5; // points; below that nobody reads it

std::size_t next_char(std::string_view s, std::size_t i) {
    for (++i; i < s.size() && (static_cast<unsigned char>(s[i]) & 0xC0U) == 0x80U;) ++i;
    return i;
}

/// Longest beginning, in whole characters and at least one, that fits.
std::size_t fitting(std::string_view s, double width, const Font& font, const MeasureText& measure) {
    std::vector<std::size_t> ends;
    for (std::size_t i = 0; i < s.size();) ends.push_back(i = next_char(s, i));
    const auto it = std::partition_point(
        ends.begin(), ends.end(), [&](std::size_t n) { return measure(s.substr(0, n), font) <= width; });
    return it == ends.begin() ? ends.front() : *(it - 1);
}

std::string cut(const std::string& text, double width, const Font& font, const MeasureText& measure) {
    if (measure(text, font) <= width) return text;
    const double room = width - measure("…", font);
    if (room <= 0) return text.substr(0, fitting(text, width, font, measure));
    return recortar_fin(text.substr(0, fitting(text, room, font, measure))) + "…";
}

void fill_up(std::string& line, const std::string& with, double width, const Font& font,
             const MeasureText& measure) {
    if (measure(with, font) <= 0) return; // what takes no room never fills it
    std::string longer = line + " " + with;
    while (measure(longer, font) <= width) {
        line = longer;
        longer += with;
    }
}
} // namespace

std::vector<std::string> wrap_text(std::string_view text, double width, const Font& font,
                                   const MeasureText& measure) {
    std::vector<std::string> lines;
    if (text.find('\n') == std::string_view::npos && measure(text, font) <= width) return {std::string(text)};
    std::string line;
    const auto put = [&](std::string_view word) {
        std::string longer = line.empty() ? std::string(word) : line + " " + std::string(word);
        if (measure(longer, font) <= width) {
            line = std::move(longer);
            return;
        }
        if (!line.empty()) lines.push_back(line);
        while (measure(word, font) > width && next_char(word, 0) < word.size()) {
            const std::size_t n = fitting(word, width, font, measure);
            lines.emplace_back(word.substr(0, n));
            word.remove_prefix(n);
        }
        line = word;
    };
    while (!text.empty()) {
        const auto end = text.find_first_of(" \n");
        if (end != 0) put(text.substr(0, end));
        if (end == std::string_view::npos) break;
        if (text[end] == '\n') {
            lines.push_back(line);
            line.clear();
        }
        text.remove_prefix(end + 1);
    }
    if (!line.empty() || lines.empty()) lines.push_back(line);
    return lines;
}

FittedText fit_text(const Item& item, const std::string& text, const MeasureText& measure) {
    FittedText t{{}, item.font};
    const bool shrink = item.shrink || (!item.wrap && item.text.numeric());
    for (;; t.font.size -= 0.5) {
        t.lines = item.wrap ? wrap_text(text, item.w, t.font, measure) : std::vector<std::string>{text};
        const bool fits = item.wrap
                              ? static_cast<double>(t.lines.size()) * line_height(t.font) <= item.h + 0.01
                              : measure(text, t.font) <= item.w;
        if (fits || !shrink || t.font.size - 0.5 < SMALLEST) break;
    }
    if (!item.wrap) t.lines.front() = cut(t.lines.front(), item.w, t.font, measure);
    if (!item.fill.empty() && !text.empty()) fill_up(t.lines.back(), item.fill, item.w, t.font, measure);
    return t;
}

} // namespace quorvel::report
