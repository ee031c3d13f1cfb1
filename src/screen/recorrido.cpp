#include "screen/recorrido.h"

#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"

namespace quorvel {

void fijar_paradas(frmQuorvel& f) {
    ui::Control* const casi_fijos[] = {&f.txtCotizacion, &f.cmbMoneda, &f.cmbifrs, &f.chkApertura,
                                       &f.cmdrut_persona};
    for (ui::Control* control : casi_fijos) control->SetEnterStop(false);
    ui::Control* const del_documento[] = {&f.cmbdoc_libro,          &f.txtnum_ref,
                                          &f.txtfecha_doc,          &f.txtfecha_pago,
                                          &f.txtrut_persona,        &f.txtnombre,
                                          &f.cmdasistente,          &f.cmbcodigo_otro_impuesto,
                                          &f.txttasa_impuesto_otro, &f.cmbcodigo_no_recuperable,
                                          &f.chkactivo_fijo,        &f.txtiva_activo_fijo};
    const bool con_documentos = f.cmblibro.Text() != "CONTABLES";
    for (ui::Control* control : del_documento) control->SetEnterStop(con_documentos);
}

void ir_al_detalle(frmQuorvel& f) {
    ui::ctlPlanilla& g = f.grdDetalle;
    if (g.SetFocus()) g.move_to(g.Row(), CUENTA);
}

} // namespace quorvel
