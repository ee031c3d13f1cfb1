#pragma once
#include "historia/version.h"
#include "voucher/comprobante.h"

namespace quorvel {

/// The key that a version's text stands for; nothing for what concerns no voucher.
[[nodiscard]] std::optional<Clave> clave_de_version(int empresa, const std::string& clave);
/// The voucher as it stood, with lines and names of files. The version must be whole. @return nothing for one
/// that holds no voucher
[[nodiscard]] std::optional<Comprobante> comprobante_de_version(int empresa, const Version& v);

} // namespace quorvel
