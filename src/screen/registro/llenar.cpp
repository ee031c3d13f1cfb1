#include "screen/registro/llenar.h"

#include "assistants/libros.h"
#include "screen/borrador.h"
#include "screen/campos.h"
#include "screen/frmQuorvel.h"

namespace quorvel {

namespace {

void elegir_codigo(frmQuorvel& f, ui::ComboBox& lista, std::size_t n, const std::string& codigo) {
    if (!codigo.empty()) (void)seleccionar_codigo(f, lista.name().c_str(), n, codigo);
}

/// The assistant, opened on the voucher, starts from its main line.
void recordar(frmQuorvel& f, const Comprobante& c) {
    if (c.lineas.empty()) return;
    SeleccionRecordada& m = c.libro == TEXTOS_LIBRO[VENTAS] ? f.estado.venta : f.estado.compra;
    m = {c.lineas.front().centro, c.lineas.front().auxiliar, "", ""};
}

} // namespace

void llenar_nuevo(frmQuorvel& f, const Comprobante& c) {
    limpiar_para_nuevo(f);
    f.mskF_comp.SetDate(c.f_comp); // the proposals below count in its year and month
    elegir_codigo(f, f.cmbDocumento, 3, c.documento);
    proponer_numero_documento(f);
    f.txtconcepto.SetText(c.concepto);
    f.txtrut_persona.SetText(c.rut_persona);
    f.txtnombre.SetText(c.nombre);
    f.txtnum_ref.SetText(c.num_ref);
    f.txtfecha_doc.SetDate(c.fecha_factura);
    f.txtfecha_pago.SetDate(c.fecha_pago);
    elegir_codigo(f, f.cmbcodigo_no_recuperable, 2, c.codigo_no_recuperable);
    elegir_codigo(f, f.cmbcodigo_otro_impuesto, 3, c.codigo_otro_impuesto);
    f.txttasa_impuesto_otro.SetText(c.tasa_impuesto_otro);
    f.chkactivo_fijo.SetValue(c.activo_fijo ? 1 : 0);
    f.txtiva_activo_fijo.SetText(Decimal(c.iva_activo_fijo).formato("#,##0"));
    f.cmblibro.select_text(c.libro);
    f.cmbdoc_libro.select_text(c.doc_libro);
    f.estado.monto_neto = c.monto_neto;
    f.estado.monto_exento = c.monto_exento;
    recordar(f, c);
    reemplazar_lineas(f, c.lineas, c.totales);
    f.borrador->obligar(); // it exists nowhere else yet
    f.grdDetalle.SetFocus();
}

} // namespace quorvel
