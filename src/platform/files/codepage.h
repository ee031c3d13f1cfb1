#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// A converted text, or the offset of the first input byte that has no counterpart.
struct Converted {
    std::string text;
    std::optional<std::size_t> bad; ///< nothing when the whole text was converted
};

/// Between UTF-8 and Windows-1252; never replaces a character in silence.
class Codepage {
public:
    Codepage();
    ~Codepage();
    Codepage(const Codepage&) = delete;
    Codepage& operator=(const Codepage&) = delete;
    [[nodiscard]] Converted to_windows1252(std::string_view utf8);
    /// Bytes 81, 8D, 8F, 90 and 9D (hexadecimal) stand for nothing.
    [[nodiscard]] Converted from_windows1252(std::string_view bytes);

private:
    struct Handles;
    std::unique_ptr<Handles> handles_;
};

} // namespace quorvel
