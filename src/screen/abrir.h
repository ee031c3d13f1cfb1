#pragma once
#include "voucher/comprobante.h"

namespace quorvel {

class frmQuorvel;

/// Opens a saved voucher on the screen and takes its lock, or shows it read-only.
/// @return false when it does not exist @throws ErrorSesion
bool abrir_comprobante(frmQuorvel& f, const Clave& clave);

} // namespace quorvel
