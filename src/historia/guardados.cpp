#include "historia/guardados.h"

#include "historia/celdas.h"
#include "historia/proteccion.h"
#include "platform/db/literal.h"
#include "text/letras_utf8.h"

#include <set>

namespace quorvel {
namespace {

bool quitado(const std::string& o) { return o == operacion::ELIMINADO || o == operacion::CORTADO; }

/// What is wrong with a stored voucher, empty when its last version is what stands.
std::string diferencia(clsConexion& db, int empresa, const ComprobanteGuardado& c) {
    const auto rs =
        db.NewRecord("select top 1 operacion, cabecera, lineas, adjuntos, " + sql_contenido(c.donde) +
                     " from ctdhistoria where empresa=" + sql_numero(empresa) +
                     " and clave=" + sql_texto(c.clave) + " order by numero desc");
    if (rs->eof() || quitado(rs->at(0).text())) return "se grabó sin historia";
    for (std::size_t i : {1U, 2U, 3U})
        if (!mismas_celdas(rs->at(i).text(), rs->at(i + 3).text())) return "cambió sin historia";
    return {};
}

} // namespace

std::vector<ComprobanteGuardado> comprobantes_guardados(clsConexion& db, int empresa) {
    std::vector<ComprobanteGuardado> todos;
    for (const auto rs =
             db.NewRecord("select f_comp, documento, subsistema, num_docum from ctcquorvel where empresa=" +
                          sql_numero(empresa) + " order by f_comp, documento, num_docum");
         !rs->eof(); rs->MoveNext()) {
        const auto texto = [&](std::size_t i) { return recortar_fin(rs->at(i).text()); };
        const auto fecha = rs->at(0).date();
        if (!fecha) continue;
        todos.push_back({clave_version(*fecha, texto(1), texto(2), texto(3)),
                         " where empresa=" + sql_numero(empresa) + " and f_comp=" + sql_fecha(fecha) +
                             " and documento=" + sql_texto(texto(1)) +
                             " and num_docum=" + sql_texto(texto(3))});
    }
    return todos;
}

bool tiene_version(clsConexion& db, int empresa, const ComprobanteGuardado& c) {
    return diferencia(db, empresa, c).empty();
}

std::vector<std::string> quitados_sin_historia(clsConexion& db, int empresa) {
    std::set<std::string> guardados;
    for (ComprobanteGuardado& c : comprobantes_guardados(db, empresa)) guardados.insert(std::move(c.clave));
    std::vector<std::string> quitados;
    for (const auto rs =
             db.NewRecord("select clave, operacion from ctdhistoria v where empresa=" + sql_numero(empresa) +
                          " and clave<>'' and not exists (select 1 from ctdhistoria w where"
                          " w.empresa=v.empresa and w.clave=v.clave and w.numero>v.numero)");
         !rs->eof(); rs->MoveNext())
        if (!quitado(rs->at(1).text()) && !guardados.contains(rs->at(0).text()))
            quitados.push_back(rs->at(0).text());
    return quitados;
}

void comparar_con_historia(clsConexion& db, int empresa,
                           const std::function<void(const std::string&)>& dice) {
    if (!leer_proteccion(db, empresa).historia || !db.has_table("ctdhistoria")) return;
    for (const ComprobanteGuardado& c : comprobantes_guardados(db, empresa))
        if (const std::string d = diferencia(db, empresa, c); !d.empty())
            dice("comprobante " + c.clave + " " + d);
    for (const std::string& clave : quitados_sin_historia(db, empresa))
        dice("comprobante " + clave + " se quitó sin historia");
}

} // namespace quorvel
