#include "voucher/esta_grabado.h"

#include "voucher/huella.h"
#include "voucher/importes.h"
#include "voucher/pasos.h"

namespace quorvel {

std::optional<Guardado> esta_grabado(clsConexion& db, const Comprobante& c, Fecha hoy) {
    auto guardado = leer_guardado(db, c.clave());
    if (!guardado) return guardado;
    try {
        const ImportesSql m = importes_sql(c, guardado->c.comprobante_adjunto, "");
        if (guardado->huella == huella_escrita(c, m, hoy)) return guardado;
    } catch (const PasoFallido&) { // not even this could have been saved
    }
    return std::nullopt;
}

} // namespace quorvel
