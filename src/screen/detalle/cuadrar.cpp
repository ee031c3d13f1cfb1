// Amount rules of the grid: the balance fill, the totals and what a line's two sides do to each other.
#include "screen/campos.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "text/numeros.h"

#include <algorithm>

namespace quorvel {

void CuadrarLinea(frmQuorvel& f) {
    ui::ctlPlanilla& g = f.grdDetalle;
    if (!g.Value(DEBE).empty() || !g.Value(HABER).empty()) return;
    const auto [d, h] = f.estado.totales;
    if (d == h) return;
    g.SetValue(d > h ? HABER : DEBE, (d > h ? d - h : h - d).formato("#,##0"));
    const Decimal mayor = std::max(d, h);
    mostrar_totales(f, {mayor, mayor});
}

void antes_de_borrar(frmQuorvel& f, bool& cancelar) {
    ui::ctlPlanilla& g = f.grdDetalle;
    cancelar = !f.ctlRegistro1.enabled(ui::ctlRegistro::Function::DeleteLine);
    if (cancelar)
        return g.SetHint("No tiene permiso para borrar líneas: pídalo a quien administra los usuarios");
    const Totales& t = f.estado.totales;
    mostrar_totales(f, {t.debe - Decimal::leer(g.Value(DEBE)), t.haber - Decimal::leer(g.Value(HABER))});
}

void frmQuorvel::RecalcularTotales() {
    Decimal d, h;
    for (int i = 0; i < grdDetalle.Rows(); ++i) {
        d = d + Decimal::leer(grdDetalle.TextMatrix(i, DEBE));
        h = h + Decimal::leer(grdDetalle.TextMatrix(i, HABER));
    }
    mostrar_totales(*this, {d, h});
}

Linea linea_de_grilla(const frmQuorvel& f, int fila) {
    const auto celda = [&](int col) { return f.grdDetalle.TextMatrix(fila, col); };
    const auto monto = [&](int col) {
        const std::string texto = celda(col);
        return texto.empty() ? std::nullopt : std::optional(Decimal::leer(texto));
    };
    return {celda(CUENTA), celda(AUXILIAR),   monto(DEBE),       monto(HABER),    celda(GLOSA),
            celda(CENTRO), celda(CONCILIADO), celda(DOC_PAGADO), celda(OTRO_IMP), celda(TASA)};
}

bool montos_legibles(const frmQuorvel& f) {
    for (int i = 0; i < f.grdDetalle.Rows(); ++i)
        for (const int col : {DEBE, HABER})
            if (!numero_sql(f.grdDetalle.TextMatrix(i, col))) return false;
    return true;
}

std::vector<Linea> lineas_de_grilla(const frmQuorvel& f) {
    std::vector<Linea> lineas;
    lineas.reserve(static_cast<std::size_t>(f.grdDetalle.Rows()));
    for (int i = 0; i < f.grdDetalle.Rows(); ++i) lineas.push_back(linea_de_grilla(f, i));
    return lineas;
}

} // namespace quorvel
