#pragma once
#include "platform/db/clsConexion.h"

#include <optional>

namespace quorvel {

/// The first place where a company's history is not what was written, in a sentence; nothing when all of it
/// is. Tells an edited version, one that is missing between others, and one that is missing at the end.
/// @throws ErrorSesion
[[nodiscard]] std::optional<std::string> romper_cadena(clsConexion& db, int empresa);
/// How far a company's history goes, to be written down outside of the database: company, version and the
/// first digits of its sum, "1-512-3fa94c01". Empty for a company without one. @throws ErrorSesion
[[nodiscard]] std::string codigo_historia(clsConexion& db, int empresa);
/// The same of the last version of the vouchers of some days: it stays as long as none of them changes.
[[nodiscard]] std::string codigo_historia(clsConexion& db, int empresa, Fecha desde, Fecha hasta);
/// Whether the history still holds what it held when a code was written down: a copy of before does not.
/// @return what is wrong, empty when nothing is @throws ErrorSesion
[[nodiscard]] std::string comparar_codigo(clsConexion& db, const std::string& codigo);

} // namespace quorvel
