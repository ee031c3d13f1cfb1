#pragma once
#include <string>
#include <string_view>

namespace quorvel {

/// First n code points of a UTF-8 text.
[[nodiscard]] std::string primeros(std::string_view texto, std::size_t n);
/// Number of code points.
[[nodiscard]] std::size_t largo(std::string_view texto);
/// Upper case of every letter, á é í ó ú ü ñ included.
[[nodiscard]] std::string mayusculas(std::string_view texto);
/// Lower case, for comparing names without regard to case.
[[nodiscard]] std::string minusculas(std::string_view texto);
/// Lower case without accents, for searching by typing.
[[nodiscard]] std::string sin_acentos(std::string_view texto);
/// A digit, a letter or a byte of one, in such a text.
[[nodiscard]] constexpr bool de_palabra(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
}
/// Without blanks at both ends.
[[nodiscard]] std::string recortar(std::string_view texto);
/// Without blanks at the end.
[[nodiscard]] std::string recortar_fin(std::string_view texto);
/// Whether every byte is of a UTF-8 character.
[[nodiscard]] bool es_utf8(std::string_view texto);
/// Composed form (NFC); bytes that are no UTF-8 become U+FFFD.
[[nodiscard]] std::string normalizar(std::string_view texto);
/// Each control character (tab, line end, …) becomes a blank, so that a cell never breaks a row text.
[[nodiscard]] std::string sin_controles(std::string_view texto);
/// Every occurrence of one text replaced by another.
[[nodiscard]] std::string reemplazar(std::string_view texto, std::string_view que, std::string_view por);
/// The same text but for the case of ASCII and accented letters.
[[nodiscard]] bool igual_sin_caso(std::string_view a, std::string_view b);

} // namespace quorvel
