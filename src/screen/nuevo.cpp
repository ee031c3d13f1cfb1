#include "screen/adjuntos/adjuntos.h"
#include "screen/borrador.h"
#include "screen/campos.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "screen/permisos.h"
#include "screen/recargar_documentos.h"
#include "voucher/bloqueo.h"
#include "voucher/cargar.h"
#include "voucher/numeracion.h"

namespace quorvel {

namespace {

void primera(ui::ListControl& lista) {
    if (lista.ListCount() > 0) lista.SetListIndex(0);
}

void habilitar_identidad(frmQuorvel& f) {
    permitir_identidad(f, true);
    primera(f.cmbDocumento);
}

void vaciar_documento(frmQuorvel& f) {
    primera(f.cmbdoc_libro);
    for (ui::TextBox* caja : {&f.txtnum_ref, static_cast<ui::TextBox*>(&f.txtfecha_doc),
                              static_cast<ui::TextBox*>(&f.txtfecha_pago), &f.txtrut_persona, &f.txtnombre})
        caja->SetText("");
}

void vaciar_impuestos(frmQuorvel& f) {
    primera(f.cmbcodigo_otro_impuesto);
    primera(f.cmbcodigo_no_recuperable);
    f.txttasa_impuesto_otro.SetText("");
    f.chkactivo_fijo.SetValue(0);
    f.txtiva_activo_fijo.SetText("0");
    primera(f.cmbifrs);
}

} // namespace

void desbloquear_usuario(frmQuorvel& f) { desbloquear(*f.glbdb, f.glbEmpresa, f.glbUsuario); }

void limpiar_para_nuevo(frmQuorvel& f) {
    // a database that does not answer leaves the screen as it is
    const std::string conjunto = carpeta_adjuntos(f).first_free(numero_adjunto(*f.glbdb, std::nullopt));
    const Borrador::Cambio cambio(f);
    desbloquear_usuario(f);
    EstadoPantalla& e = f.estado;
    e.anterior_sin_grabar = cambio.queda();
    e.comprobante_cierre = e.cierre_generado = false;
    e.grabado.clear();
    e.cargado.reset();
    e.cortado.reset();
    e.tasa_de_lineas.clear();
    e.monto_neto = e.monto_exento = {}; // a new voucher does not inherit the amounts of the one before
    f.glbBanderaNuevo = f.glbBanderaLeer = true;
    quitar_prestadas(f);
    habilitar_identidad(f);
    f.lstadjunto.Clear();
    primera(f.cmbMoneda);
    f.txtCotizacion.SetText("1");
    e.cotizacion_exacta = 1;
    e.cotizacion_mostrada = "1";
    f.txtNum_doc.SetText("");
    f.chkApertura.SetValue(0);
    f.SetCaption("Comprobante Contable");
    f.grdDetalle.Clear();
    f.grdDetalle.SetCol(CUENTA);
    vaciar_documento(f);
    mostrar_totales(f, {});
    f.lblEstado.SetCaption("");
    f.lblUsuario.SetCaption(std::to_string(f.glbUsuario) + " " + f.glbN_usuario);
    f.lblF_ult_modificacion.SetCaption(fecha_dmy(f.servicios.reloj.hoy()));
    f.lblsubsistema.SetCaption("01 Contabilidad");
    for (ui::Label* l : {&f.lblCuenta, &f.lblAuxiliar, &f.lblCentro, &f.lblOtro_impuesto}) l->SetCaption("");
    e.ultima_cuenta.clear();
    vaciar_impuestos(f);
    fijar_conjunto(f, conjunto);
    const auto p = permisos(f.glbPermiso);
    permitir_cambios(f, true, p[PERMISO_BORRAR_LINEA], p[PERMISO_IMPRIMIR], "");
    f.ctlRegistro1.NewRecord();
    proponer_correlativo_libro(f);
}

void permitir_cambios(frmQuorvel& f, bool modificar, bool borrar_linea, bool imprimir,
                      const std::string& motivo) {
    f.ctlRegistro1.SetModifyEnabled(modificar);
    f.ctlRegistro1.SetDeleteLineEnabled(borrar_linea);
    f.ctlRegistro1.SetPrintEnabled(imprimir);
    f.grdDetalle.SetLocked(!modificar);
    f.ctlRegistro1.SetToolTip(motivo);
    f.grdDetalle.SetToolTip(modificar ? f.estado.falta : motivo);
    ui::Control* const cambian[] = {&f.cmblibro,
                                    &f.cmbifrs,
                                    &f.chkApertura,
                                    &f.cmbdoc_libro,
                                    &f.cmdrut_persona,
                                    &f.cmdasistente,
                                    &f.cmbcodigo_otro_impuesto,
                                    &f.cmbcodigo_no_recuperable,
                                    &f.chkactivo_fijo,
                                    &f.cmdcortar,
                                    &f.cmdadjunto_agregar,
                                    &f.cmdadjunto_eliminar,
                                    &f.mnuAnular,
                                    &f.mnuEliminar,
                                    &f.mnuventa,
                                    &f.mnucompra,
                                    &f.mnuretencion};
    for (ui::Control* control : cambian) {
        control->SetEnabled(modificar);
        control->SetToolTip(motivo);
    }
    // what a text box holds can still be copied
    ui::TextBox* const cajas[] = {&f.txtnro_correlativo, &f.txtCotizacion, &f.txtconcepto,
                                  &f.txtnum_ref,         &f.txtfecha_doc,  &f.txtfecha_pago,
                                  &f.txtrut_persona,     &f.txtnombre,     &f.txttasa_impuesto_otro,
                                  &f.txtiva_activo_fijo};
    for (ui::TextBox* caja : cajas) {
        caja->SetLocked(!modificar);
        caja->SetToolTip(motivo);
    }
}

void proponer_numero_documento(frmQuorvel& f) {
    const std::string texto = f.cmbDocumento.Text();
    if (texto == "(Ninguno)") return f.txtNum_doc.SetText("");
    const Fecha fecha = f.mskF_comp.date().value_or(f.servicios.reloj.hoy());
    const int anio_fecha = anio(fecha) < 2000 ? anio(f.servicios.reloj.hoy()) : anio(fecha);
    if (texto.empty()) return;
    f.estado.numero_propuesto = proponer_numero(*f.glbdb, f.glbEmpresa, codigo_documento(f), anio_fecha);
    f.txtNum_doc.SetText(std::to_string(f.estado.numero_propuesto));
}

void proponer_correlativo_libro(frmQuorvel& f) {
    const std::string libro = f.cmblibro.Text();
    if (libro.empty()) return;
    Fecha fecha = f.mskF_comp.date().value_or(f.servicios.reloj.hoy());
    if (anio(fecha) < 2000) fecha = f.servicios.reloj.hoy();
    f.txtnro_correlativo.SetText(
        std::to_string(proponer_correlativo(*f.glbdb, f.glbEmpresa, libro, anio(fecha), mes(fecha))));
}

} // namespace quorvel
