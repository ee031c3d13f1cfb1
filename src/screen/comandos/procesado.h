#pragma once
#include "voucher/desenlace.h"

namespace quorvel {

class frmQuorvel;
/// The shown voucher is saved and in state "P"; says "Comprobante no válido" otherwise.
[[nodiscard]] bool exigir_procesado(frmQuorvel& f);
/// Deletes the shown voucher.
[[nodiscard]] Desenlace eliminar_cargado(frmQuorvel& f);
/// Turns the shown voucher into a new, unsaved one that keeps fields, lines and attachment entries.
void RenovarComprobante(frmQuorvel& f);

} // namespace quorvel
