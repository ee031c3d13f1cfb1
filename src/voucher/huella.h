#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/grabar_sql.h"

namespace quorvel {

// Fingerprint of a stored voucher: all that a save writes into header and lines, and the names of its
// attached files. What leaves them as they are (edit lock, cheque) leaves it as it is.

/// @param cabecera the header's row, all columns; lines and names are read in one query @throws ErrorSesion
[[nodiscard]] std::string huella_guardada(clsConexion& db, Recordset& cabecera, const Clave& clave);
/// What huella_guardada gives once this voucher is saved.
/// @param m as they go into the header
[[nodiscard]] std::string huella_escrita(const Comprobante& c, const ImportesSql& m, Fecha hoy);

} // namespace quorvel
