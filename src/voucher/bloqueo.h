#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"

namespace quorvel {

inline constexpr const char* SOLO_LECTURA =
    "Comprobante contable solo lectura porque esta siendo modificado por otro usuario";
/// Neither result is tested: a failure leaves the voucher editable without a lock.
void bloquear(clsConexion& db, const Clave& clave, int usuario);
/// Releases every voucher that the user holds in the company.
void desbloquear(clsConexion& db, int empresa, int usuario);

} // namespace quorvel
