#pragma once
#include "platform/files/attachments.h"
#include "voucher/grabar.h"

namespace quorvel {

class frmQuorvel;

/// The attachment folders of the screen's database, below the base folder of the settings file.
[[nodiscard]] Attachments carpeta_adjuntos(const frmQuorvel& f);
/// A number for the set of a voucher that has none, past folders that a lost voucher left behind. The folder
/// becomes the voucher's own with its first file.
void nuevo_conjunto(frmQuorvel& f);
/// Shows and uses this attachment set.
void fijar_conjunto(frmQuorvel& f, const std::string& conjunto);
/// Once a save has copied the files of another voucher's set away, only one of both places keeps them: the
/// stored one, or the old one when it failed. What a stored row names stays.
void quitar_copias(frmQuorvel& f, const Comprobante& c, const ResultadoGrabar& r);
/// Copies a file into the voucher's set and lists it; silent at the first failure.
void adjuntar_archivo(frmQuorvel& f, const std::string& archivo);
// The panel's buttons; each ends silently at the first failure and leaves the list as it was.
void adjunto_agregar(frmQuorvel& f);
void adjunto_eliminar(frmQuorvel& f);
void adjunto_abrir(frmQuorvel& f);
void adjunto_guardar_copia(frmQuorvel& f);

} // namespace quorvel
