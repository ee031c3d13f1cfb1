#pragma once
#include "platform/files/attachments.h"

namespace quorvel {

class frmQuorvel;

/// The attachment folders of the screen's database, below the base folder of the settings file.
[[nodiscard]] Attachments carpeta_adjuntos(const frmQuorvel& f);
/// A new set for the voucher on the screen: its number, past folders that a lost voucher left behind.
void nuevo_conjunto(frmQuorvel& f);
/// Shows and uses this attachment set.
void fijar_conjunto(frmQuorvel& f, const std::string& conjunto);
// The panel's buttons; each ends silently at the first failure and leaves the list as it was.
void adjunto_agregar(frmQuorvel& f);
void adjunto_eliminar(frmQuorvel& f);
void adjunto_abrir(frmQuorvel& f);
void adjunto_guardar_copia(frmQuorvel& f);

} // namespace quorvel
