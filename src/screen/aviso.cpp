#include "screen/aviso.h"

#include "screen/frmQuorvel.h"

namespace quorvel {

namespace {

bool grabado(const frmQuorvel& f) { return !f.estado.grabado.empty() && !f.borrador->hay(); }

std::string aviso(const frmQuorvel& f) {
    if (f.estado.cortado)
        return "Cortado: hasta que lo grabe no está en la base. Cambie fecha, documento o número y grabe "
               "(F5)";
    if (grabado(f)) return f.estado.grabado;
    const auto fecha = f.mskF_comp.date();
    const bool cerrado = f.config.existe && fecha && anio(*fecha) < f.config.anio;
    if (cerrado && !f.glbBanderaNuevo)
        return "El año " + std::to_string(anio(*fecha)) + " está cerrado: lo que cambie no se puede grabar";
    const bool vacia = f.grdDetalle.Rows() == 0 && f.grdDetalle.NewRowPending() == 0;
    if (f.estado.anterior_sin_grabar && vacia) return "Lo anterior quedó sin grabar: Ctrl+R lo recupera";
    return {};
}

} // namespace

void avisar_estado(frmQuorvel& f) { f.ctlRegistro1.SetNotice(aviso(f), grabado(f)); }

} // namespace quorvel
