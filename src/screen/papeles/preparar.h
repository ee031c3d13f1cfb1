#pragma once

namespace quorvel {

class frmQuorvel;

/// Stages the shown voucher for printing, with the busy pointer and the progress of long ones.
/// @return false when the person cancelled @throws std::runtime_error, ErrorSesion
bool preparar_impresion(frmQuorvel& f);

} // namespace quorvel
