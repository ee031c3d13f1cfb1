// Sales, purchases, income and egress: one procedure over a table of variants.
#include "assistants/libros.h"
#include "assistants/lineas.h"
#include "assistants/reapertura.h"
#include "screen/asistentes/frmAsistente.h"
#include "screen/asistentes/pasos.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"

namespace quorvel {
namespace {

/// Income shares the memory of purchases, egress that of sales.
SeleccionRecordada& memoria_de(frmQuorvel& f, int libro) {
    return libro == VENTAS || libro == EGRESOS ? f.estado.venta : f.estado.compra;
}

/// The voucher's rate as the assistant reads it: a saved one stands with its decimal point.
std::string tasa_con_coma(const frmQuorvel& f) {
    const std::string tasa = f.txttasa_impuesto_otro.Text();
    return tasa.find(',') == std::string::npos ? reemplazar(tasa, ".", ",") : tasa;
}

void proponer_cuenta(frmQuorvel& f, frmAsistente& d, const SeleccionRecordada& m) {
    d.txtCuenta.SetText(m.cuenta);
    d.lblCuenta.SetCaption(m.n_cuenta);
    d.txtauxiliar.SetText(m.auxiliar);
    d.lblauxiliar.SetCaption(m.n_auxiliar);
    d.habilitar_auxiliar();
    const int otro = f.cmbcodigo_otro_impuesto.ListIndex();
    d.cmbcodigo_otro_impuesto.SetListIndex(otro < d.cmbcodigo_otro_impuesto.ListCount() ? otro : -1);
    d.txttasa_impuesto_otro.SetText(tasa_con_coma(f));
}

void proponer_montos(frmQuorvel& f, frmAsistente& d, const Variante& v) {
    const auto p =
        proponer_reapertura(*f.glbdb, {f.estado.monto_neto, f.estado.monto_exento, f.lblTotalDebe.Caption(),
                                       tasa_con_coma(f), clave_pantalla(f), f.config.*v.otros});
    if (!p) return;
    d.txtNeto.SetText(p->neto);
    d.txtExento.SetText(p->exento);
    d.lbliva.SetCaption(p->iva);
    d.txtotro.SetText(p->otro);
    d.txttotal.SetText(p->total);
}

void aplicar(frmQuorvel& f, const frmAsistente& d, const Variante& v) {
    f.cmblibro.SetListIndex(v.libro);
    f.cmbdoc_libro.select_text(d.cmbdoc_libro.Text());
    f.txttasa_impuesto_otro.SetText(d.txttasa_impuesto_otro.Text());
    f.cmbcodigo_otro_impuesto.SetListIndex(d.cmbcodigo_otro_impuesto.ListIndex());
    memoria_de(f, v.libro) = {d.txtCuenta.Text(), d.txtauxiliar.Text(), d.lblCuenta.Caption(),
                              d.lblauxiliar.Caption()};
    f.estado.monto_neto = d.txtNeto.Value();
    f.estado.monto_exento = d.txtExento.Value();
    const DocumentoTributario doc{
        d.cmbdoc_libro.Text(), d.txtCuenta.Text(), d.txtauxiliar.Text(), auxiliar_contraparte(d.cmbAuxiliar),
        d.txttotal.Text(),     d.lbliva.Caption(), d.txtotro.Text(),     d.chktrasponer.Value() == 1};
    reemplazar_lineas(f, lineas_documento(v, doc, f.config, f.txtconcepto.Text()), doc.total);
}

void generar(frmQuorvel& f, int libro) {
    const Variante& v = variante(libro);
    frmAsistente d(f.escritorio());
    preparar_sesion(f, d);
    d.gintlibro = static_cast<std::int16_t>(libro);
    d.Load();
    d.SetCaption(std::string(v.titulo));
    d.lblimpuesto.SetCaption("IVA");
    preseleccionar_documento(f, d.cmbdoc_libro);
    SeleccionRecordada& memoria = memoria_de(f, libro);
    recordar_linea(f, memoria, 0, true);
    proponer_cuenta(f, d, memoria);
    proponer_montos(f, d, v);
    d.ShowModal();
    if (d.gblnaceptar) aplicar(f, d, v);
    d.Unload();
}

} // namespace

void asistente_venta(frmQuorvel& f) { generar(f, VENTAS); }
void asistente_compra(frmQuorvel& f) { generar(f, COMPRAS); }
void asistente_ingreso(frmQuorvel& f) { generar(f, INGRESOS); }
void asistente_egreso(frmQuorvel& f) { generar(f, EGRESOS); }

} // namespace quorvel
