#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/anotar.h"
#include "voucher/cargar.h"
#include "voucher/chart.h"
#include "voucher/grabar.h"
#include "voucher/grabar_sql.h"
#include "voucher/pasos.h"

#include <algorithm>
#include <tuple>

namespace quorvel {
namespace {

struct LineaGuardada {
    std::string centro, auxiliar;
    Decimal debe, haber; ///< whole pesos: other programs store fractions where the column lets them
};

/// All rows before the first change: the engine may not go on reading what is being changed. In the order of
/// their balances, so that two vouchers that share accounts take the rows of those balances in one order.
std::vector<LineaGuardada> lineas_guardadas(clsConexion& db, const Clave& clave) {
    std::vector<LineaGuardada> lineas;
    for (const auto rs = db.NewRecord("select * from ctdquorvel " + sql_clave(clave)); !rs->eof();
         rs->MoveNext())
        lineas.push_back({rs->fields("centro").Value.text(), rs->fields("auxiliar").Value.text(),
                          rs->fields("debe_nacional").Value.decimal().redondeado(),
                          rs->fields("haber_nacional").Value.decimal().redondeado()});
    std::ranges::sort(lineas, {}, [](const LineaGuardada& l) { return std::tie(l.centro, l.auxiliar); });
    return lineas;
}

/// "debe3= debe3 - 500,    haber3=haber3 - 0"
std::string menos(const LineaGuardada& l, int mes) {
    const std::string m = std::to_string(mes);
    return "debe" + m + "= debe" + m + " - " + sql_numero(l.debe) + ",    haber" + m + "=haber" + m + " - " +
           sql_numero(l.haber);
}

void desprocesar(clsConexion& db, const Clave& clave, const LineaGuardada& l) {
    const auto rs = db.NewRecord("select b.* from ctmcentros a, ctmgcuenta b  where a.g_cuenta=b.g_cuenta"
                                 " and a.centro=" +
                                 sql_texto(l.centro));
    if (rs->eof()) throw PasoFallido("Problemas al buscar grupo de cuenta ");
    const auto largos = largos_de_niveles(rs->fields("formato_centro").Value.text());
    const auto niveles = static_cast<std::size_t>(std::clamp<std::int64_t>(
        rs->fields("num_nivel").Value.integer(), 0, static_cast<std::int64_t>(largos.size())));
    const std::string resta = menos(l, mes(clave.f_comp));
    const std::string anio_empresa = " and anio=" + sql_numero(anio(clave.f_comp));
    for (std::size_t n = 0; n < niveles; ++n)
        exigir(db,
               "update  ctmsdcenth  set " + resta + " where empresa=" + sql_numero(clave.empresa) +
                   " and centro=" + sql_texto(primeros(l.centro, largos[n])) + anio_empresa,
               "Problemas al desprocesar centros");
    if (recortar(l.auxiliar).empty()) return;
    exigir(db,
           "update  ctmsdmayor  set " + resta + " where empresa=" + sql_numero(clave.empresa) +
               " and centro=" + sql_texto(l.centro) + " and auxiliar=" + sql_texto(l.auxiliar) + anio_empresa,
           "Problemas al desprocesar auxiliar");
}

} // namespace

bool esta_anulado(clsConexion& db, const Clave& k) {
    const auto ahora = leer_cabecera(db, k.empresa, k.f_comp, k.documento, k.num_docum, k.subsistema);
    return ahora && ahora->estado == "X";
}

Desenlace AnularComprobante(clsConexion& db, const Comprobante& c, Fecha f_ult_modificacion,
                            const std::string& huella) {
    const Clave clave = c.clave();
    const auto anular = [&] {
        const Comprobante guardado = retener_intacto(db, clave, c.usuario, huella);
        if (guardado.estado != "P") throw PasoFallido("Comprobante no válido");
        const Proteccion proteccion = exigir_abierto(db, guardado);
        Decimal debe, haber;
        for (const LineaGuardada& l : lineas_guardadas(db, clave)) {
            desprocesar(db, clave, l);
            debe = debe + l.debe;
            haber = haber + l.haber;
        }
        if (c.ilegible == Campo::cotizacion) throw PasoFallido("Problemas para actualizar cabecera");
        exigir(db, sql_anulada(c, {debe.pesos(), haber.pesos()}, f_ult_modificacion));
        exigir(db, sql_borrar_detalle(clave));
        anotar(db, proteccion, clave, {.usuario = c.usuario, .operacion = operacion::ANULADO});
    };
    return en_transaccion(db, anular, [&] { return esta_anulado(db, clave); });
}

} // namespace quorvel
