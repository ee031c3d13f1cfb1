#pragma once
#include "historia/version.h"
#include "platform/db/clsConexion.h"

#include <functional>

namespace quorvel {

struct ComprobanteGuardado {
    std::string clave, donde; ///< clave_version(), " where …"
};
/// A company's stored vouchers by day, kind and number. @throws ErrorSesion
[[nodiscard]] std::vector<ComprobanteGuardado> comprobantes_guardados(clsConexion& db, int empresa);
/// Whether a stored voucher's last version is what stands. @throws ErrorSesion
[[nodiscard]] bool tiene_version(clsConexion& db, int empresa, const ComprobanteGuardado& c);
/// Keys of vouchers that are stored no more although no version says so. @throws ErrorSesion
[[nodiscard]] std::vector<std::string> quitados_sin_historia(clsConexion& db, int empresa);
/// Tells each voucher that is not as its last version says: changed, saved or removed behind the history's
/// back.
/// @param dice hears a sentence each @throws ErrorSesion
void comparar_con_historia(clsConexion& db, int empresa, const std::function<void(const std::string&)>& dice);

} // namespace quorvel
