#pragma once
#include "platform/db/clsConexion.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvel {

/// Other taxes as the list shows them: code, blank, description, by code; the empty entry
/// first. @throws ErrorSesion
[[nodiscard]] std::vector<std::string> entradas_otro_impuesto(clsConexion& db);
/// Rate, with decimal comma, of the tax of a list entry; nothing for the empty entry or an unknown tax.
[[nodiscard]] std::optional<std::string> tasa_de_entrada(clsConexion& db, const std::string& entrada);

} // namespace quorvel
