#include "screen/comandos/comandos.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "voucher/diferencia.h"

namespace quorvel {

/// Names the likely causes of the difference and goes to the cell of the first one.
void explicar_diferencia(frmQuorvel& f) {
    ui::ctlPlanilla& g = f.grdDetalle;
    if (!g.commit_edit()) return;
    std::vector<Linea> lineas = lineas_de_grilla(f);
    if (g.NewRowPending() == 1) lineas.push_back(linea_de_grilla(f, g.Rows()));
    const Diagnostico diagnostico = explicar(lineas);
    if (diagnostico.causas.empty()) return f.informacion(diagnostico.texto());
    const CausaDiferencia& primera = diagnostico.causas.front();
    g.SetFocus();
    g.move_to(static_cast<int>(primera.linea), primera.debe ? DEBE : HABER);
    f.informacion(diagnostico.texto());
}

} // namespace quorvel
