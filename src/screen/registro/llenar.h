#pragma once
#include "voucher/comprobante.h"

namespace quorvel {

class frmQuorvel;

/// Starts a new voucher on the screen with this one's fields and lines; number and correlative are proposed.
/// What was on the screen stays as a draft. @throws ErrorSesion
void llenar_nuevo(frmQuorvel& f, const Comprobante& c);

} // namespace quorvel
