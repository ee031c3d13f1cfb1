#include "voucher/anotar.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "voucher/bloqueo.h"
#include "voucher/grabar_sql.h"
#include "voucher/validar.h"

namespace quorvel {
namespace {

void agregar_historia(Pasos& pasos, std::vector<std::string> sentencias) {
    for (std::string& una : sentencias) pasos.agregar(std::move(una), PASO_HISTORIA, Pasos::Filas::alguna);
}

} // namespace

void anotar(Pasos& pasos, const Proteccion& p, const Clave& k, const Autoria& a) {
    if (!p.historia) return;
    agregar_historia(pasos,
                     sql_version({.empresa = k.empresa,
                                  .usuario = a.usuario,
                                  .operacion = a.operacion,
                                  .grupo = a.grupo,
                                  .clave = clave_version(k.f_comp, k.documento, k.subsistema, k.num_docum),
                                  .sumas = a.sumas,
                                  .solo_abierto = a.operacion != std::string_view(operacion::CHEQUE)},
                                 sql_clave(k)));
}

void anotar(clsConexion& db, const Proteccion& p, const Clave& clave, const Autoria& autoria) {
    Pasos pasos;
    anotar(pasos, p, clave, autoria);
    pasos.ejecutar(db);
}

void anotar_suceso(Pasos& pasos, const Nota& nota) { agregar_historia(pasos, sql_suceso(nota)); }

void exigir_mes_abierto(const Proteccion& p, const Comprobante& c) {
    if (c.f_comp && p.mes_bloqueado(*c.f_comp))
        throw PasoFallido("El mes " + fecha_dmy(*c.f_comp).substr(3) +
                          " está bloqueado. Se desbloquea en el menú Empresa, Protección y meses bloqueados");
}

void exigir_sin_abrir(const Comprobante& c, int usuario) {
    if (bloqueado_por_otro(c.bloqueo_usuario, usuario))
        throw PasoFallido("Otro usuario tiene abierto el comprobante " + nombrar(c.clave()));
}

void exigir_unica_apertura(clsConexion& db, const Comprobante& c) {
    const std::string anio_ = sql_numero(anio(*c.f_comp));
    for (const auto rs =
             db.NewRecord("select documento, num_docum, f_comp, coalesce(ifrs,'0') as norma, apertura from"
                          " ctcquorvel where empresa=" +
                          sql_numero(c.empresa) + " and f_comp between #01/01/" + anio_ + "# and #12/31/" +
                          anio_ + "# and apertura='1' and estado='P'");
         !rs->eof(); rs->MoveNext()) {
        const Clave otra{c.empresa, c.subsistema, *rs->at(2).date(), recortar_fin(rs->at(0).text()),
                         recortar_fin(rs->at(1).text())};
        const bool la_misma = otra.f_comp == c.f_comp && otra.documento == recortar_fin(c.documento) &&
                              otra.num_docum == recortar_fin(c.num_docum);
        const std::string norma = recortar(rs->at(3).text());
        if (la_misma || (norma != c.ifrs && norma != "0" && c.ifrs != "0")) continue;
        throw PasoFallido("El año " + anio_ + " ya tiene una apertura de esta norma: " + nombrar(otra) +
                          ". Ábrala y genere la apertura sobre ella, o elimínela antes");
    }
}

Proteccion exigir_abierto(clsConexion& db, const Comprobante& c) {
    const auto [k, proteccion] = leer_periodo_protegido(db, c.empresa, Fecha{});
    if (!proteccion.cierre) return proteccion;
    exigir_mes_abierto(proteccion, c);
    if (const auto cerrado = rechazo_cierre(c, k, db))
        throw PasoFallido(cerrado->mensaje +
                          "\r\nPara cambiarlo hay que reabrir el año: menú Empresa, Reabrir el año");
    return proteccion;
}

} // namespace quorvel
