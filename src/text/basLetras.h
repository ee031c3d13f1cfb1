#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// An amount in Spanish words, without capital letters: "1.234.567" is "un millón doscientos …".
/// Amounts as the screen shows them: "." groups thousands, "," is the decimal mark; an empty text is 0.
/// @param largo width of the answer (cut or padded with blanks), 0 leaves it as it is
/// @param moneda name of the unit @param fraccion name of the hundredths
/// @throws std::invalid_argument for a text that is no number, std::out_of_range from 10^12 on
[[nodiscard]] std::string Letras(std::string_view strnumero, int largo = 0,
                                 const std::optional<std::string>& moneda = {},
                                 const std::optional<std::string>& fraccion = {});
/// The words of a whole number; decimals are dropped. Throws as Letras does.
[[nodiscard]] std::string NumeroALetras(std::string_view strnumero);

} // namespace quorvel
