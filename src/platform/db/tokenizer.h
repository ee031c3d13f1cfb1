#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

enum class Tok : std::uint8_t {
    end,
    name,
    quoted_name, ///< "name", kept as written
    integer,     ///< at most 18 digits, so that it is a 64-bit number
    decimal,
    text, ///< 'text' with its quotes
    date, ///< #mm/dd/yyyy# with its marks
    op,
    bad ///< an unclosed literal, a number that runs into a name, a byte 0
};

[[nodiscard]] constexpr bool is_literal(Tok t) {
    return t == Tok::integer || t == Tok::decimal || t == Tok::text || t == Tok::date;
}

struct Token {
    Tok kind = Tok::end;
    std::string text;        ///< names folded to lower case, accents included; everything else as written
    std::size_t literal = 0; ///< running number of a literal within the statement
};

namespace lexer {
enum Class : std::uint8_t { other, blank, letter, digit };
constexpr std::array<Class, 256> CLASSES = [] {
    std::array<Class, 256> t{};
    for (std::size_t c = 0; c < 256; ++c) {
        if (c == ' ' || (c >= 9 && c <= 13))
            t[c] = blank;
        else if ((c | 32U) - 'a' < 26U || c == '_' || c >= 0x80)
            t[c] = letter;
        else if (c - '0' < 10U)
            t[c] = digit;
    }
    return t;
}();
[[nodiscard]] inline Class class_of(char c) { return CLASSES[static_cast<unsigned char>(c)]; }

/// End of a literal closed by the mark it starts with, a doubled mark standing for itself; nullptr when open.
[[nodiscard]] inline const char* closed(const char* p, const char* end, char mark) {
    for (++p; p < end; p += 2) {
        p = static_cast<const char*>(std::memchr(p, mark, static_cast<std::size_t>(end - p)));
        if (p == nullptr) return nullptr;
        if (p + 1 == end || p[1] != mark) return p + 1;
    }
    return nullptr;
}

[[nodiscard]] inline Tok number(const char*& p, const char* end) {
    const char* start = p;
    Tok kind = Tok::integer;
    while (p < end && class_of(*p) == digit) ++p;
    if (p - start > 18) kind = Tok::decimal;
    if (p < end && *p == '.') {
        kind = Tok::decimal;
        for (++p; p < end && class_of(*p) == digit;) ++p;
    }
    return p < end && class_of(*p) == letter ? Tok::bad : kind;
}

/// Blanks and comments; false for a comment that is never closed.
inline bool skip(const char*& p, const char* end) {
    while (p < end) {
        if (class_of(*p) == blank)
            ++p;
        else if (*p == '-' && p + 1 < end && p[1] == '-') {
            while (p < end && *p != '\n') ++p;
        } else if (*p == '/' && p + 1 < end && p[1] == '*') {
            for (p += 2;; ++p) {
                if (p + 1 >= end) return false;
                if (p[0] == '*' && p[1] == '/') break;
            }
            p += 2;
        } else
            return true;
    }
    return true;
}

/// The next token of a statement: the one reading of the dialect that the look-up and the translator share.
/// @param start set to its first byte @param p moved behind it
[[nodiscard]] inline Tok next(const char*& start, const char*& p, const char* end) {
    if (!skip(p, end)) return Tok::bad;
    start = p;
    if (p == end) return Tok::end;
    switch (class_of(*p)) {
    case letter:
        for (++p; p < end && class_of(*p) >= letter;) ++p;
        return Tok::name;
    case digit: return number(p, end);
    default: break;
    }
    const char c = *p;
    if (c == '.' && p + 1 < end && class_of(p[1]) == digit) {
        // ".5" is a number, "a.5" cannot be written
        return number(p, end);
    }
    if (c == '\'' || c == '#' || c == '"') {
        p = closed(p, end, c);
        if (p == nullptr) return Tok::bad;
        return c == '\'' ? Tok::text : c == '#' ? Tok::date : Tok::quoted_name;
    }
    ++p;
    if (c == '\0') return Tok::bad;
    if (p < end) {
        const char d = *p;
        if ((c == '<' && (d == '=' || d == '>')) || (c == '>' && d == '=') || (c == '!' && d == '=') ||
            (c == '|' && d == '|') || (c == ':' && d == ':'))
            ++p;
    }
    return Tok::op;
}
} // namespace lexer

/// Cuts one statement into tokens; a ";" at its end is dropped.
/// @throws ErrorSesion for what is no token, for a second statement and for parameter marks
[[nodiscard]] std::vector<Token> tokenize(std::string_view sql);
/// The statements of a script, each without its ";". Texts, comments and quoted names may hold ";".
[[nodiscard]] std::vector<std::string> separar_sentencias(std::string_view guion);

} // namespace quorvel
