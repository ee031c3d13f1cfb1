#include "text/numeros.h"
#include "voucher/cargar.h"
#include "voucher/grabar.h"
#include "voucher/grabar_sql.h"
#include "voucher/pasos.h"

namespace quorvel {

std::string EliminarComprobante(clsConexion& db, const Clave& clave, const std::string& conjunto,
                                int usuario) {
    const auto quedo_eliminado = [&] {
        return !leer_cabecera(db, clave.empresa, clave.f_comp, clave.documento, clave.num_docum,
                              clave.subsistema);
    };
    const auto eliminar = [&] {
        const auto guardado = retener_cabecera(db, clave);
        if (guardado && usuario != 0) exigir_sin_bloqueo_ajeno(*guardado, usuario);
        exigir(db, sql_borrar_detalle(clave));
        // a set that another voucher shares keeps its rows
        const std::string n = std::to_string(val_entero(conjunto));
        std::int64_t duenos = 0;
        for (const auto rs = db.NewRecord("select empresa from ctcquorvel where comprobante_adjunto=" + n);
             n != "0" && duenos < 2 && !rs->eof(); rs->MoveNext())
            ++duenos;
        if (n != "0" && duenos < 2) exigir(db, sql_borrar_adjuntos(n));
        exigir(db, " delete from ctcquorvel " + sql_clave(clave));
    };
    return en_transaccion(db, eliminar, quedo_eliminado);
}

} // namespace quorvel
