// Amount rules of the grid: the balance fill, the totals and what a line's two sides do to each other.
#include "screen/campos.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "text/numeros.h"

namespace quorvel {

namespace {
constexpr const char* PATRON = "#,##0";
Decimal total(const ui::Label& l) { return Decimal::leer(l.Caption()); }
} // namespace

void CuadrarLinea(frmQuorvel& f) {
    ui::ctlPlanilla& g = f.grdDetalle;
    if (!g.Value(DEBE).empty() || !g.Value(HABER).empty()) return;
    const Decimal d = total(f.lblTotalDebe), h = total(f.lblTotalhaber);
    if (d > h) {
        g.SetValue(HABER, (d - h).formato(PATRON));
        f.lblTotalhaber.SetCaption(f.lblTotalDebe.Caption());
    } else if (h > d) {
        g.SetValue(DEBE, (h - d).formato(PATRON));
        f.lblTotalDebe.SetCaption(f.lblTotalhaber.Caption());
    }
}

void antes_de_borrar(frmQuorvel& f, bool& cancelar) {
    ui::ctlPlanilla& g = f.grdDetalle;
    cancelar = !f.ctlRegistro1.enabled(ui::ctlRegistro::Function::DeleteLine);
    if (cancelar)
        return g.SetHint("No tiene permiso para borrar líneas: pídalo a quien administra los usuarios");
    f.lblTotalDebe.SetCaption((total(f.lblTotalDebe) - Decimal::leer(g.Value(DEBE))).formato(PATRON));
    f.lblTotalhaber.SetCaption((total(f.lblTotalhaber) - Decimal::leer(g.Value(HABER))).formato(PATRON));
}

void frmQuorvel::RecalcularTotales() {
    Decimal d, h;
    for (int i = 0; i < grdDetalle.Rows(); ++i) {
        d = d + Decimal::leer(grdDetalle.TextMatrix(i, DEBE));
        h = h + Decimal::leer(grdDetalle.TextMatrix(i, HABER));
    }
    fijar_totales(*this, d.formato(PATRON), h.formato(PATRON));
}

Linea linea_de_grilla(const frmQuorvel& f, int fila) {
    const auto celda = [&](int col) { return f.grdDetalle.TextMatrix(fila, col); };
    return {celda(CUENTA), celda(AUXILIAR),   celda(DEBE),       celda(HABER),    celda(GLOSA),
            celda(CENTRO), celda(CONCILIADO), celda(DOC_PAGADO), celda(OTRO_IMP), celda(TASA)};
}

std::vector<Linea> lineas_de_grilla(const frmQuorvel& f) {
    std::vector<Linea> lineas;
    lineas.reserve(static_cast<std::size_t>(f.grdDetalle.Rows()));
    for (int i = 0; i < f.grdDetalle.Rows(); ++i) lineas.push_back(linea_de_grilla(f, i));
    return lineas;
}

} // namespace quorvel
