#include "voucher/importes.h"

#include "text/numeros.h"
#include "voucher/pasos.h"

namespace quorvel {
namespace {

struct Sumas {
    Decimal debe, haber;
};

/// Sums of the amounts as the lines will hold them, whole pesos.
Sumas sumar_lineas(const std::vector<Linea>& lineas) {
    Sumas escritas, exactas;
    const auto enteros = [](Decimal d) { return Decimal::leer(d.formato("0")); };
    for (const Linea& l : lineas) {
        if (!numero_sql(l.debe) || !numero_sql(l.haber)) throw PasoFallido(PASO_DETALLE);
        const Decimal debe = Decimal::leer(l.debe), haber = Decimal::leer(l.haber);
        exactas = {exactas.debe + debe, exactas.haber + haber};
        escritas = {escritas.debe + enteros(debe), escritas.haber + enteros(haber)};
    }
    if (!cabe_en_total(escritas.debe) || !cabe_en_total(escritas.haber)) throw PasoFallido(PASO_DETALLE);
    // fractions that balance exactly may stop balancing once they are whole pesos
    if (exactas.debe == exactas.haber && escritas.debe != escritas.haber)
        throw PasoFallido("Comprobante descuadrado");
    return escritas;
}

} // namespace

ImportesSql importes_sql(const Comprobante& c, const std::string& conjunto, const char* paso) {
    const auto exigido = [paso](const std::optional<std::string>& numero) {
        return numero ? *numero : throw PasoFallido(paso);
    };
    const Sumas sumas = sumar_lineas(c.lineas);
    ImportesSql m;
    m.t_debe = sumas.debe.formato("0");
    m.t_haber = sumas.haber.formato("0");
    m.cotizacion = exigido(numero_sql(c.cotizacion));
    m.monto_neto = formato(c.monto_neto, "0");
    m.monto_exento = formato(c.monto_exento, "0");
    m.conjunto = conjunto;
    m.correlativo = exigido(entero_sql(c.nro_correlativo));
    m.iva_activo_fijo = exigido(entero_sql(c.iva_activo_fijo));
    return m;
}

} // namespace quorvel
