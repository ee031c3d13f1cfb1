#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"

namespace quorvel {

/// Whether the database holds exactly this voucher, as its user saved it on this day: header, lines and
/// attachment list. The number of the attachment set may be another one. @throws ErrorSesion
[[nodiscard]] bool esta_grabado(clsConexion& db, const Comprobante& c, Fecha hoy);

} // namespace quorvel
