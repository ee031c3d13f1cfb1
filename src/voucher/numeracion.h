#pragma once
#include "platform/db/clsConexion.h"

#include <cstdint>
#include <string>

namespace quorvel {

/// Highest number of the company, document kind and year plus one. @throws ErrorSesion
[[nodiscard]] std::int64_t proponer_numero(clsConexion& db, int empresa, const std::string& documento,
                                           int anio);
/// Highest correlative of the company, book, year and month plus one. @throws ErrorSesion
[[nodiscard]] std::int64_t proponer_correlativo(clsConexion& db, int empresa, const std::string& libro,
                                                int anio, int mes);

} // namespace quorvel
