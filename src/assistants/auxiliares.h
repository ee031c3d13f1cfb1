#pragma once
#include "platform/db/clsConexion.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace quorvel {

/// Code of an auxiliary in such an entry: what stands before the first " - ".
[[nodiscard]] std::string codigo_de_entrada(const std::string& entrada);
/// Active auxiliaries registered for a RUT, as the list shows them: code, " - ", name. @throws ErrorSesion
[[nodiscard]] std::vector<std::string> auxiliares_de_rut(clsConexion& db, const std::string& rut);
/// The code of the next auxiliary: it follows the highest number of six digits, or of more once those are
/// used up; codes that are taken, also by auxiliaries out of use, are skipped, and codes that are no numbers
/// do not count. @throws ErrorSesion
[[nodiscard]] std::string siguiente_codigo(clsConexion& db);
/// Creates an auxiliary of the counterpart unless it has an active one. One transaction; nothing stays of a
/// failure.
/// @throws std::invalid_argument asking for the RUT, or telling that it is none; std::runtime_error with the
/// description of what failed
void generar_auxiliar(clsConexion& db, const std::string& rut, const std::string& nombre);

} // namespace quorvel
