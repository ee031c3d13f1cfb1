#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"

namespace quorvel {

void borrar_linea(frmQuorvel& f) {
    // On the row being added there is nothing saved to remove; giving it up is what the person means.
    if (f.grdDetalle.NewRowPending() == 1) {
        f.grdDetalle.cancel_edit();
        return f.grdDetalle.cancel_pending_row();
    }
    if (f.grdDetalle.Rows() > 0 && f.grdDetalle.Row() < f.grdDetalle.Rows()) f.grdDetalle.delete_row();
}

} // namespace quorvel
