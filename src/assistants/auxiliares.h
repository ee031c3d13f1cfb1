#pragma once
#include "platform/db/clsConexion.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace quorvel {

/// Active auxiliaries registered for a RUT, as the list shows them: code, " - ", name. @throws ErrorSesion
[[nodiscard]] std::vector<std::string> auxiliares_de_rut(clsConexion& db, const std::string& rut);
/// Creates an auxiliary of the counterpart unless it has an active one. Codes that are taken, also by
/// auxiliaries out of use, are skipped. One transaction; nothing stays of a failure.
/// @throws std::runtime_error with the description of what failed, or asking for the RUT when it is blank
void generar_auxiliar(clsConexion& db, const std::string& rut, const std::string& nombre);

} // namespace quorvel
