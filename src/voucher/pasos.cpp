#include "voucher/pasos.h"

#include "voucher/bloqueo.h"
#include "voucher/grabar_sql.h"

namespace quorvel {

void exigir(clsConexion& db, const std::string& sql, const char* texto) {
    if (db.executesql(sql) != 0) return;
    throw PasoFallido(*texto != '\0' ? std::string(texto) : db.last_error());
}

std::optional<EstadoGuardado> retener_cabecera(clsConexion& db, const Clave& clave, const char* texto) {
    const std::string condicion = sql_clave(clave);
    // a change of nothing holds the row on a server as well: a read alone would not
    exigir(db, "update ctcquorvel set subsistema=subsistema" + condicion, texto);
    const auto rs =
        db.NewRecord("select estado, bloqueo_usuario, comprobante_adjunto from ctcquorvel" + condicion);
    if (rs->eof()) return std::nullopt;
    EstadoGuardado g;
    g.estado = rs->fields("estado").Value.text();
    g.bloqueo = rs->fields("bloqueo_usuario").Value.integer();
    g.conjunto = rs->fields("comprobante_adjunto").Value.integer();
    return g;
}

void exigir_sin_bloqueo_ajeno(const EstadoGuardado& guardado, int usuario) {
    if (guardado.bloqueo >= 1 && guardado.bloqueo != usuario) throw PasoFallido(SOLO_LECTURA);
}

} // namespace quorvel
