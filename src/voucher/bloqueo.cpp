#include "voucher/bloqueo.h"

#include "platform/db/literal.h"
#include "voucher/grabar_sql.h"

namespace quorvel {

void bloquear(clsConexion& db, const Clave& clave, int usuario) {
    db.executesql("update ctcquorvel set bloqueo_usuario= " + sql_numero(usuario) + sql_clave(clave));
}

void desbloquear(clsConexion& db, int empresa, int usuario) {
    db.executesql(" update ctcquorvel set bloqueo_usuario= 0  where empresa=" + sql_numero(empresa) +
                  " and bloqueo_usuario=" + sql_numero(usuario));
}

std::optional<Guardado> leer_con_bloqueo(clsConexion& db, const Clave& clave, int usuario) {
    const auto c =
        leer_cabecera(db, clave.empresa, clave.f_comp, clave.documento, clave.num_docum, clave.subsistema);
    if (!c) return std::nullopt;
    desbloquear(db, clave.empresa, usuario); // what was on the screen before is no longer shown
    if (!bloqueado_por_otro(c->bloqueo_usuario, usuario)) bloquear(db, c->clave(), usuario);
    return leer_guardado(db, c->clave());
}

} // namespace quorvel
