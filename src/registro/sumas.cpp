#include "registro/sumas.h"

#include "registro/clases.h"

#include <algorithm>

namespace quorvel::registro {
namespace {

/// An amount that may stand beside the others, and where it goes when it does.
struct Aparte {
    std::int64_t Documento::*monto;
    std::int64_t Composicion::*destino;
};
constexpr Aparte APARTE[] = {
    {&Documento::iva_uso_comun, &Composicion::iva}, {&Documento::iva_activo_fijo, &Composicion::iva},
    {&Documento::sin_credito, &Composicion::costo}, {&Documento::tabacos_puros, &Composicion::otro},
    {&Documento::cigarrillos, &Composicion::otro},  {&Documento::tabacos_elaborados, &Composicion::otro},
};

std::int64_t retenido(const Documento& d) {
    const bool por_codigo =
        std::ranges::any_of(d.otros, [](const OtroImpuesto& o) { return es_retencion(o.codigo); });
    return por_codigo ? 0 : d.retenido_total + d.retenido_parcial;
}

} // namespace

std::int64_t con_signo(const OtroImpuesto& o) { return es_retencion(o.codigo) ? -o.valor : o.valor; }

Composicion componer(const Documento& d) {
    Composicion base{
        .neto = d.neto, .exento = d.exento, .iva = d.iva, .costo = d.iva_no_recuperable, .total = d.total};
    base.otro = -retenido(d);
    for (const OtroImpuesto& o : d.otros) base.otro += con_signo(o);
    const auto faltante = [](const Composicion& c) {
        return c.total - c.neto - c.exento - c.iva - c.costo - c.otro;
    };
    for (unsigned cuales = 0; cuales < 1U << std::size(APARTE); ++cuales) {
        Composicion c = base;
        for (std::size_t i = 0; i < std::size(APARTE); ++i)
            if ((cuales >> i & 1U) != 0) c.*APARTE[i].destino += d.*APARTE[i].monto;
        if (faltante(c) == 0) return c;
    }
    base.diferencia = faltante(base);
    return base;
}

} // namespace quorvel::registro
