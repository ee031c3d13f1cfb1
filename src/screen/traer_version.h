#pragma once
#include "voucher/comprobante.h"

namespace quorvel {

class frmQuorvel;

/// Puts a voucher as it once stood onto the screen, as a new one that nobody has saved: under its own number,
/// which is free when it was deleted. Its files come with it as far as they are still there, and with a
/// deleted one its cheque.
/// @throws ErrorSesion
void traer_version(frmQuorvel& f, const Comprobante& c);

} // namespace quorvel
