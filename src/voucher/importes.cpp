#include "voucher/importes.h"

#include "voucher/pasos.h"

namespace quorvel {
namespace {

Totales escritos(const std::vector<Linea>& lineas) {
    Totales t;
    for (const Linea& l : lineas) {
        const Decimal debe = l.debe.value_or(0), haber = l.haber.value_or(0);
        if (!cabe_en_total(debe) || !cabe_en_total(haber)) throw PasoFallido(PASO_DETALLE);
        t = {t.debe + debe.redondeado(), t.haber + haber.redondeado()};
    }
    if (!cabe_en_total(t.debe) || !cabe_en_total(t.haber)) throw PasoFallido(PASO_DETALLE);
    return t;
}

} // namespace

ImportesSql importes_sql(const Comprobante& c, std::int64_t conjunto, const char* paso) {
    if (c.ilegible != Campo::ninguno) throw PasoFallido(c.ilegible == Campo::detalle ? PASO_DETALLE : paso);
    const Totales exactos = totales_de(c.lineas), t = escritos(c.lineas);
    // fractions that balance exactly may stop balancing once they are whole pesos
    if (exactos.debe == exactos.haber && t.debe != t.haber) throw PasoFallido("Comprobante descuadrado");
    return {t.debe.pesos(), t.haber.pesos(), conjunto};
}

} // namespace quorvel
