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

} // namespace quorvel
