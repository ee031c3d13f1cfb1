#pragma once
#include "historia/version.h"
#include "platform/db/clsConexion.h"

#include <functional>
#include <optional>

namespace quorvel {

/// Versions of a voucher, newest first, without their contents. @throws ErrorSesion
[[nodiscard]] std::vector<Version> leer_versiones(clsConexion& db, int empresa, const std::string& clave);
/// The last versions of vouchers that were deleted or cut and are not stored again, newest first, without
/// contents.
/// @throws ErrorSesion
[[nodiscard]] std::vector<Version> leer_eliminados(clsConexion& db, int empresa);
/// One version whole. @throws ErrorSesion
[[nodiscard]] std::optional<Version> leer_version(clsConexion& db, int empresa, std::int64_t numero);
/// All of a company in their order, whole, without holding more than some of them.
/// @throws ErrorSesion
void recorrer_versiones(clsConexion& db, int empresa, const std::function<void(const Version&)>& cada_una);

} // namespace quorvel
