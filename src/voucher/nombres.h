#pragma once
#include "text/indice_palabras.h"
#include "voucher/configuracion.h"

namespace quorvel {

/// Codes that a line may carry, with their names: accounts and cost centres as long as their group asks for,
/// auxiliaries, the latter also by their RUT. @throws ErrorSesion
[[nodiscard]] IndicePalabras leer_nombres(clsConexion& db, Maestro maestro);
/// Empty for an unknown code. @throws ErrorSesion
[[nodiscard]] std::string nombre_de_codigo(clsConexion& db, Maestro maestro, const std::string& codigo);

} // namespace quorvel
