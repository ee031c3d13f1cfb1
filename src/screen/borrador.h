#pragma once

namespace quorvel {

class frmQuorvel;

/// Keeps a voucher that is saved nowhere and is about to leave the screen, in
/// "borrador_EMPRESA_USUARIO.csv" in the program's folder; "Importar CSV" brings it back. Nothing happens for
/// a saved or an empty voucher. What cannot be kept is lost without a message: it was given up.
void guardar_borrador(frmQuorvel& f);
/// The voucher of the draft has been saved.
void borrar_borrador(const frmQuorvel& f);

} // namespace quorvel
