#pragma once
#include "platform/db/clsConexion.h"

namespace quorvel {

/// Enables the income and egress vouchers for accounting. @return how many of the two were added
/// @throws ErrorSesion
[[nodiscard]] int habilitar_documentos_caja(clsConexion& db);

} // namespace quorvel
