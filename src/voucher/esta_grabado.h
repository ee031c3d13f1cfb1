#pragma once
#include "voucher/cargar.h"

namespace quorvel {

/// The stored voucher when it is exactly this one, as its user saved it on this day: header, lines and
/// attachment list. The number of the attachment set may be another one. @throws ErrorSesion
[[nodiscard]] std::optional<Guardado> esta_grabado(clsConexion& db, const Comprobante& c, Fecha hoy);

} // namespace quorvel
