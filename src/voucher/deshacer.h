#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"
#include "voucher/desenlace.h"

namespace quorvel {

/// Vouchers that one import or one booking of the register saved, as the history tells.
struct Grupo {
    std::vector<Clave> comprobantes;
    std::vector<std::string> cambiados; ///< what was done to some of them since, a sentence each
};
/// @throws ErrorSesion
[[nodiscard]] Grupo leer_grupo(clsConexion& db, int empresa, const std::string& grupo);
/// Deletes all of them in one transaction; none when one was changed since, is closed or is open elsewhere.
[[nodiscard]] Desenlace deshacer_grupo(clsConexion& db, int empresa, int usuario, const std::string& grupo);

} // namespace quorvel
