#pragma once
#include <string>
#include <string_view>

namespace quorvel {

/// Outcome of the RUT check: either the text to show in the box or the message of the refusal.
struct ResultadoRut {
    bool valido = false;
    std::string texto;   ///< "12.345.678-5" when valid and not empty
    std::string mensaje; ///< empty when valid
};
/// Modulo-11 check of the Chilean RUT (published check of the Servicio de Impuestos Internos): weights 2 to 7
/// from the last digit on. An empty text is valid. A valid RUT comes back grouped by "." with its check
/// character in upper case.
[[nodiscard]] ResultadoRut validarut(std::string_view strrut);
/// Puts the dash before the last character of a text that has none.
[[nodiscard]] std::string con_guion(std::string_view rut);

} // namespace quorvel
