#include "screen/comandos/comandos.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "text/numeros.h"

namespace quorvel {

/// What the current line needs to balance the voucher, as an open edit that the person accepts or drops.
void proponer_diferencia(frmQuorvel& f) {
    ui::ctlPlanilla& g = f.grdDetalle;
    if (g.Locked() || !g.SetFocus() || !g.commit_edit() || g.Value(CUENTA).empty()) return;
    const Totales& t = f.estado.totales;
    if (t.debe == t.haber) return;
    const Decimal debe = t.debe - Decimal::leer(g.Value(DEBE));
    const Decimal haber = t.haber - Decimal::leer(g.Value(HABER));
    const bool al_haber = debe > haber;
    if (g.move_to(g.Row(), al_haber ? HABER : DEBE))
        g.propose((al_haber ? debe - haber : haber - debe).formato("#,##0"));
}

} // namespace quorvel
