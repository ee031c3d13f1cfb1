#pragma once
#include "voucher/comprobante.h"

namespace quorvel {

class frmQuorvel;

/// Shows the inbox of the register of purchases and sales until it is left; what was chosen in it comes to
/// the screen then. Its files stay while the screen is open.
void abrir_registro(frmQuorvel& f);
/// The same with a file, of the register or of electronic documents. @throws ErrorRegistro, ErrorArchivo
void abrir_registro(frmQuorvel& f, const std::string& archivo);
/// Opens a saved voucher on the screen and takes its lock, or shows it read-only.
/// @return false when it does not exist @throws ErrorSesion
bool abrir_comprobante(frmQuorvel& f, const Clave& clave);

} // namespace quorvel
