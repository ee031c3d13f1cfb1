#pragma once
#include "text/numeros.h"

namespace quorvel {

/// A sum of displayed amounts, "1.000+500-20". A sign that nothing follows yet counts for nothing.
/// @return nothing when the text is no such sum, or has more digits than an amount may have
[[nodiscard]] std::optional<Decimal> sumar(std::string_view chileno);
/// The same of whole amounts that are not negative, as an accounting line holds them.
[[nodiscard]] std::optional<Decimal> monto_de_linea(std::string_view chileno);

} // namespace quorvel
