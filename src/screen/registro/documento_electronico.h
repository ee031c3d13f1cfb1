#pragma once
#include <string>

namespace quorvel {

class frmQuorvel;

/// A file that came onto the screen as an electronic invoice. One new document fills a new voucher, to which
/// the file is attached; on a saved voucher it is compared with it; many documents go to the inbox. A file
/// that cannot be read, or whose document stands elsewhere, changes nothing. @throws ErrorRegistro,
/// ErrorArchivo
void recibir_documento(frmQuorvel& f, const std::string& archivo);
/// Whether an attached file was an electronic invoice that has been dealt with: on an empty new voucher like
/// the above, or refused because it stands on another voucher. Otherwise it is attached as any file.
/// @throws ErrorRegistro, ErrorArchivo
[[nodiscard]] bool atender_adjunto(frmQuorvel& f, const std::string& archivo);

} // namespace quorvel
