#pragma once
#include "voucher/desenlace.h"

namespace quorvel {

class frmQuorvel;
/// The shown voucher is saved and in state "P"; says "Comprobante no válido" otherwise.
[[nodiscard]] bool exigir_procesado(frmQuorvel& f);
/// Deletes the shown voucher. @param operacion what its history says
[[nodiscard]] Desenlace eliminar_cargado(frmQuorvel& f, const char* operacion);
/// Turns the shown voucher into a new, unsaved one that keeps fields, lines and attachment entries.
void RenovarComprobante(frmQuorvel& f);

} // namespace quorvel
