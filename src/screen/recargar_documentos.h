#pragma once

namespace quorvel {

class frmQuorvel;
/// Fills the document list from the database, "(Ninguno)" first, and selects the first entry.
void recargar_documentos(frmQuorvel& f);
/// What the screen offers follows the master tables, which somebody has changed; what is chosen stays chosen.
void actualizar_listas(frmQuorvel& f);
/// Releases the locks of the session's user.
void desbloquear_usuario(frmQuorvel& f);

} // namespace quorvel
