#pragma once
#include "text/fecha.h"

#include <string>
#include <string_view>

namespace quorvel {

/// The same day of the next month; the last day of a month leads to the last day of the next.
[[nodiscard]] Fecha mes_siguiente(Fecha f);
/// Each month that a text names becomes the next one, in the same letters: "Arriendo DICIEMBRE 2026" reads
/// "Arriendo ENERO 2027", "10/2026" reads "11/2026". A year that follows a December, also behind "de" or
/// "del", moves on.
[[nodiscard]] std::string con_meses_siguientes(std::string_view texto);

} // namespace quorvel
