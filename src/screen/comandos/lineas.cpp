// What is done to the lines with one key.
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

namespace quorvel {

namespace {

bool listas(frmQuorvel& f) {
    return !f.grdDetalle.Locked() && f.grdDetalle.SetFocus() && f.grdDetalle.commit_edit();
}

} // namespace

/// The copy is the line being added: Enter keeps it, Escape gives it up.
void duplicar_linea(frmQuorvel& f) {
    ui::ctlPlanilla& g = f.grdDetalle;
    if (!listas(f) || g.Value(CUENTA).empty()) return;
    std::vector<std::string> celdas;
    for (int col = 0; col < COLUMNAS; ++col) celdas.push_back(g.Value(col));
    if (!g.move_to(g.Rows() + g.NewRowPending(), CUENTA)) return;
    celdas[SEC] = std::to_string(g.Rows() + 1);
    celdas[CONCILIADO].clear();
    for (int col = 0; col < COLUMNAS; ++col) g.SetValue(col, celdas[static_cast<std::size_t>(col)]);
    const Totales& t = f.estado.totales;
    mostrar_totales(f, {t.debe + Decimal::leer(celdas[DEBE]), t.haber + Decimal::leer(celdas[HABER])});
    g.SetCol(celdas[DEBE].empty() ? HABER : DEBE);
}

/// The gloss of the line, or of the voucher where the line has none.
void glosa_en_todas(frmQuorvel& f) {
    ui::ctlPlanilla& g = f.grdDetalle;
    if (!listas(f) || g.Rows() + g.NewRowPending() == 0) return;
    const std::string propia = g.Value(GLOSA);
    const std::string glosa =
        propia.empty() ? sin_controles(primeros(f.txtconcepto.Text(), LARGO_GLOSA)) : propia;
    if (glosa.empty()) return g.SetHint("Escriba primero la glosa, en la línea o en el comprobante");
    g.one_step([&] {
        for (int fila = 0; fila < g.Rows() + g.NewRowPending(); ++fila) g.SetTextMatrix(fila, GLOSA, glosa);
    });
}

} // namespace quorvel
