// Sales, purchases, income and egress: one procedure over a table of variants.
#include "assistants/libros.h"
#include "assistants/lineas.h"
#include "assistants/reapertura.h"
#include "screen/asistentes/frmAsistente.h"
#include "screen/asistentes/pasos.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <cmath>

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

/// Neither net nor exempt amount: the document is keyed for the first time.
bool es_primera_vez(const frmQuorvel& f) { return f.estado.monto_neto + f.estado.monto_exento <= 0; }

/// By code: the two lists are read at different times, and a tax may have left the table since.
void proponer_otro_impuesto(const frmQuorvel& f, frmAsistente& d) {
    elegir_codigo(d.cmbcodigo_otro_impuesto, 3, f.cmbcodigo_otro_impuesto.Text());
    const std::string tasa = tasa_con_coma(f);
    // Choosing the tax has brought its rate, which a voucher without one does not take away.
    if (!tasa.empty() || !es_primera_vez(f)) d.txttasa_impuesto_otro.SetText(tasa);
}

/// Amount of the lines on the account of the other tax, when there are some.
std::optional<double> otro_en_lineas(const frmQuorvel& f, const std::string& cuenta) {
    if (f.txttasa_impuesto_otro.Text() != f.estado.tasa_de_lineas || cuenta.empty()) return std::nullopt;
    std::optional<Decimal> suma;
    for (const Linea& l : lineas_de_grilla(f))
        if (recortar(l.centro) == cuenta) suma = suma.value_or(0) + l.debe.value_or(0) - l.haber.value_or(0);
    if (!suma) return std::nullopt;
    return std::fabs(suma->valor());
}

void proponer_montos(frmQuorvel& f, frmAsistente& d, const Variante& v) {
    const std::string& cuenta = f.config.*v.otros;
    const auto p = proponer_reapertura(*f.glbdb, {f.estado.monto_neto, f.estado.monto_exento,
                                                  f.estado.totales.debe, f.txttasa_impuesto_otro.Text(),
                                                  clave_pantalla(f), cuenta, otro_en_lineas(f, cuenta)});
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
    elegir_codigo(f.cmbcodigo_otro_impuesto, 3, d.cmbcodigo_otro_impuesto.Text());
    memoria_de(f, v.libro) = leer_seleccion(d);
    f.estado.monto_neto = Decimal::leer(d.txtNeto.Text());
    f.estado.monto_exento = Decimal::leer(d.txtExento.Text());
    f.estado.tasa_de_lineas = d.txttasa_impuesto_otro.Text();
    reemplazar_lineas(f, d.lineas, d.totales);
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
    mostrar_seleccion(d, memoria);
    proponer_otro_impuesto(f, d);
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
