#pragma once

namespace quorvel {

class frmQuorvel;

/// Creates the staging tables for whoever may print, also when another window of the same person has dropped
/// them on leaving.
void asegurar_tablas(frmQuorvel& f);
/// Stages the shown voucher for printing, with the busy pointer and the progress of long ones.
/// @return false when the person cancelled @throws std::runtime_error, ErrorSesion
bool preparar_impresion(frmQuorvel& f);

} // namespace quorvel
