#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/cargar.h"

namespace quorvel {

inline constexpr const char* SOLO_LECTURA =
    "Comprobante contable solo lectura porque esta siendo modificado por otro usuario";
/// Neither result is tested: a failure leaves the voucher editable without a lock.
void bloquear(clsConexion& db, const Clave& clave, int usuario);
/// Releases every voucher that the user holds in the company.
void desbloquear(clsConexion& db, int empresa, int usuario);
/// Another user than this one holds the lock. @param bloqueo_usuario as the header has it
[[nodiscard]] constexpr bool bloqueado_por_otro(std::int64_t bloqueo_usuario, int usuario) {
    return bloqueo_usuario >= 1 && bloqueo_usuario != usuario;
}
/// Header and fingerprint of a voucher that goes to the user's screen. It is locked for him before it is
/// read, so that what a colleague saved up to then is never written over with an older reading; one that
/// another user edits is only read. The user's other locks are released. @return nothing when there is no
/// such voucher
/// @throws ErrorSesion
[[nodiscard]] std::optional<Guardado> leer_con_bloqueo(clsConexion& db, const Clave& clave, int usuario);

} // namespace quorvel
