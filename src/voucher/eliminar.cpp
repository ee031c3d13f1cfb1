#include "voucher/anotar.h"
#include "voucher/cargar.h"
#include "voucher/conjunto.h"
#include "voucher/grabar.h"
#include "voucher/grabar_sql.h"
#include "voucher/pasos.h"

namespace quorvel {

bool esta_eliminado(clsConexion& db, const Clave& k) {
    return !leer_cabecera(db, k.empresa, k.f_comp, k.documento, k.num_docum, k.subsistema);
}

void eliminar_en_transaccion_abierta(clsConexion& db, const Comprobante& c, const Proteccion& p,
                                     const Autoria& a) {
    const Clave clave = c.clave();
    anotar(db, p, clave, a); // as it stood
    exigir(db, sql_borrar_detalle(clave));
    const std::int64_t conjunto = c.comprobante_adjunto;
    if (solo_de_uno(db, conjunto)) exigir(db, sql_borrar_adjuntos(conjunto));
    exigir(db, " delete from ctcquorvel " + sql_clave(clave));
}

ResultadoEliminar EliminarComprobante(clsConexion& db, const Clave& clave, int usuario,
                                      const std::string& huella, const char* operacion) {
    ResultadoEliminar r;
    const auto eliminar = [&] {
        r.quien = retener_intacto(db, clave, usuario, huella);
        const Proteccion proteccion = exigir_abierto(db, *r.quien);
        eliminar_en_transaccion_abierta(db, *r.quien, proteccion,
                                        {.usuario = usuario, .operacion = operacion});
    };
    r.desenlace = en_transaccion(db, eliminar, [&] { return esta_eliminado(db, clave); });
    return r;
}

} // namespace quorvel
