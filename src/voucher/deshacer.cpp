#include "voucher/deshacer.h"

#include "platform/db/literal.h"
#include "voucher/anotar.h"
#include "voucher/cargar.h"
#include "voucher/de_version.h"
#include "voucher/grabar_sql.h"

namespace quorvel {
namespace {

void quitar(clsConexion& db, const Clave& clave, const Autoria& autoria) {
    exigir(db, "update ctcquorvel set subsistema=subsistema" + sql_clave(clave)); // held on a server as well
    const auto guardado = leer_guardado(db, clave);
    if (!guardado) throw PasoFallido("Ya no está el comprobante " + nombrar(clave));
    exigir_sin_abrir(guardado->c, autoria.usuario);
    eliminar_en_transaccion_abierta(db, guardado->c, exigir_abierto(db, guardado->c), autoria);
}

} // namespace

Grupo leer_grupo(clsConexion& db, int empresa, const std::string& grupo) {
    Grupo g;
    if (grupo.empty() || !db.has_table("ctdhistoria")) return g;
    for (const auto rs = db.NewRecord(
             "select v.clave, (select max(w.numero) from ctdhistoria w where w.empresa=v.empresa and"
             " w.clave=v.clave) as ultima, v.numero from ctdhistoria v where v.empresa=" +
             sql_numero(empresa) + " and v.grupo=" + sql_texto(grupo) +
             " and v.grupo<>'' and v.operacion in ('importado','registro') order by v.numero");
         !rs->eof(); rs->MoveNext()) {
        const auto clave = clave_de_version(empresa, rs->at(0).text());
        if (!clave) continue;
        g.comprobantes.push_back(*clave);
        if (rs->at(1).integer() != rs->at(2).integer())
            g.cambiados.push_back("Cambió después el comprobante " + nombrar(*clave));
    }
    return g;
}

Desenlace deshacer_grupo(clsConexion& db, int empresa, int usuario, const std::string& grupo) {
    const Autoria autoria{.usuario = usuario, .operacion = operacion::ELIMINADO, .grupo = nuevo_grupo()};
    return en_transaccion(
        db,
        [&] {
            const Grupo g = leer_grupo(db, empresa, grupo);
            if (!g.cambiados.empty()) throw PasoFallido(g.cambiados.front());
            if (g.comprobantes.empty()) throw PasoFallido("No hay comprobantes que deshacer");
            for (const Clave& k : g.comprobantes) quitar(db, k, autoria);
        },
        [&] { return leer_grupo(db, empresa, grupo).cambiados.size() != 0; });
}

} // namespace quorvel
