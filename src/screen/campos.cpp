#include "screen/campos.h"

#include "platform/db/literal.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "screen/maestro.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/listas.h"

#include <algorithm>

namespace quorvel {

namespace {

constexpr const char* PATRON = "#,##0";
constexpr std::int64_t PRESTADA = -1; // marks an entry that a list has for one voucher only

std::string codigo(const ui::ListControl& lista, std::size_t n) {
    return recortar(primeros(lista.Text(), n));
}

std::string nombre_de(Recordset& rs, const std::string& criterio, const char* codigo_, const char* nombre,
                      const std::string& si_falta) {
    rs.FindFirst(criterio);
    if (rs.nomatch()) return si_falta;
    return campo(rs, codigo_) + " " + campo(rs, nombre);
}

/// The list shows its first entry for a stored code that it does not know; that stays the voucher's until
/// another is chosen.
std::string norma(const frmQuorvel& f) {
    const auto& c = f.estado.cargado;
    const bool suya =
        !f.glbBanderaNuevo && c && f.cmbifrs.ListIndex() == 0 &&
        std::ranges::find(NORMAS, c->ifrs, [](const char* n) { return primeros(n, 1); }) == std::end(NORMAS);
    return suya ? c->ifrs : codigo(f.cmbifrs, 1);
}

/// Fills a voucher's amounts from texts and marks the first that is none.
struct LectorMontos {
    Comprobante& c;
    [[nodiscard]] Decimal decimal(const std::string& texto, Campo campo) const {
        if (c.ilegible == Campo::ninguno && !numero_sql(texto)) c.ilegible = campo;
        return Decimal::leer(texto);
    }
    [[nodiscard]] std::int64_t entero(const std::string& texto, Campo campo) const {
        return decimal(texto, campo).pesos();
    }
};

void leer_montos(const frmQuorvel& f, Comprobante& c) {
    const LectorMontos leer{c};
    const bool intacta = f.txtCotizacion.Text() == f.estado.cotizacion_mostrada;
    c.cotizacion =
        intacta ? f.estado.cotizacion_exacta : leer.decimal(f.txtCotizacion.Text(), Campo::cotizacion);
    c.nro_correlativo = leer.entero(f.txtnro_correlativo.Text(), Campo::correlativo);
    c.iva_activo_fijo = leer.entero(f.txtiva_activo_fijo.Text(), Campo::iva_activo_fijo);
    c.comprobante_adjunto = leer.entero(f.gstrcomprobante_adjunto, Campo::adjuntos);
    if (c.ilegible == Campo::ninguno && !montos_legibles(f)) c.ilegible = Campo::detalle;
    c.monto_neto = f.estado.monto_neto;
    c.monto_exento = f.estado.monto_exento;
    c.totales = f.estado.totales;
}

void mostrar_listas(frmQuorvel& f, const Comprobante& c) {
    elegir_codigo(f.cmbDocumento, 3, c.documento);
    elegir_codigo(f.cmbMoneda, 2, c.moneda);
    elegir_codigo(f.cmbcodigo_no_recuperable, 2, c.codigo_no_recuperable);
    elegir_codigo(f.cmbcodigo_otro_impuesto, 3, c.codigo_otro_impuesto);
    if (!seleccionar_codigo(f, "cmbifrs", 1, c.ifrs)) f.cmbifrs.SetListIndex(0);
    f.chkactivo_fijo.SetValue(c.activo_fijo ? 1 : 0);
    f.txttasa_impuesto_otro.SetText(c.tasa_impuesto_otro);
}

void mostrar_libro(frmQuorvel& f, const Comprobante& c) {
    elegir_texto(f.cmblibro, c.libro);
    elegir_texto(f.cmbdoc_libro, c.doc_libro);
    f.txtrut_persona.SetText(recortar(c.rut_persona));
    f.txtnombre.SetText(recortar(c.nombre));
    f.txtnum_ref.SetText(recortar(c.num_ref));
    f.txtfecha_doc.SetDate(c.fecha_factura);
    f.txtfecha_pago.SetDate(c.fecha_pago);
}

} // namespace

ui::Control* control_de(frmQuorvel& f, Campo campo) {
    const std::pair<Campo, ui::Control*> controles[] = {
        {Campo::fecha, &f.mskF_comp},
        {Campo::documento, &f.cmbDocumento},
        {Campo::numero, &f.txtNum_doc},
        {Campo::concepto, &f.txtconcepto},
        {Campo::libro, &f.cmblibro},
        {Campo::doc_libro, &f.cmbdoc_libro},
        {Campo::num_ref, &f.txtnum_ref},
        {Campo::fecha_documento, &f.txtfecha_doc},
        {Campo::rut, &f.txtrut_persona},
        {Campo::nombre, &f.txtnombre},
        {Campo::norma, &f.cmbifrs},
        {Campo::totales, &f.lblTotalDebe},
        {Campo::detalle, &f.grdDetalle},
        {Campo::cotizacion, &f.txtCotizacion},
        {Campo::correlativo, &f.txtnro_correlativo},
        {Campo::iva_activo_fijo, &f.txtiva_activo_fijo},
        {Campo::adjuntos, &f.lstadjunto},
    };
    const auto* const c = std::ranges::find(controles, campo, &std::pair<Campo, ui::Control*>::first);
    return c == std::end(controles) ? nullptr : c->second;
}

std::vector<std::string> entradas(const ui::ListControl& lista) {
    std::vector<std::string> todas;
    for (int i = 0; i < lista.ListCount(); ++i) todas.push_back(lista.List(i));
    return todas;
}

void elegir_codigo(ui::ListControl& lista, std::size_t n, const std::string& texto) {
    const std::string codigo = recortar(primeros(texto, n));
    for (int i = 0; i < lista.ListCount(); ++i)
        if (recortar(primeros(lista.List(i), n)) == codigo) return lista.SetListIndex(i);
    lista.AddItem(texto, PRESTADA);
    lista.SetListIndex(lista.ListCount() - 1);
}

void elegir_texto(ui::ListControl& lista, const std::string& texto) {
    if (recortar(texto).empty() && lista.ListCount() > 0 && recortar(lista.List(0)).empty())
        return lista.SetListIndex(0);
    if (lista.select_text(texto)) return;
    if (recortar(texto).empty()) return lista.SetListIndex(-1);
    lista.AddItem(texto, PRESTADA);
    lista.SetListIndex(lista.ListCount() - 1);
}

void quitar_prestadas(frmQuorvel& f) {
    for (ui::ListControl* lista : {&f.cmbDocumento, &f.cmbMoneda, &f.cmbcodigo_no_recuperable,
                                   &f.cmbcodigo_otro_impuesto, &f.cmblibro, &f.cmbdoc_libro})
        for (int i = lista->ListCount() - 1; i >= 0; --i)
            if (lista->ItemData(i) == PRESTADA) lista->RemoveItem(i);
}

bool seleccionar_codigo(frmQuorvel& f, const char* nombre, std::size_t n, const std::string& buscado) {
    auto* lista = dynamic_cast<ui::ListControl*>(f.find(nombre));
    if (!lista) return false;
    for (int i = 0; i < lista->ListCount(); ++i)
        if (recortar(primeros(lista->List(i), n)) == recortar(buscado)) {
            lista->SetListIndex(i);
            return true;
        }
    return false;
}

std::string codigo_documento(const frmQuorvel& f) {
    const std::string texto = f.cmbDocumento.Text();
    return texto == NINGUNO ? "" : recortar_fin(primeros(texto, 3));
}

std::string subsistema(const frmQuorvel& f) {
    // A subsystem without a name has an empty label; the voucher keeps its own code.
    if (!f.glbBanderaNuevo && f.estado.cargado) return f.estado.cargado->subsistema;
    return primeros(f.lblsubsistema.Caption(), 2);
}

std::optional<Clave> clave_pantalla(const frmQuorvel& f) {
    if (!f.glbBanderaNuevo && f.estado.cargado) return f.estado.cargado->clave();
    const auto fecha = f.mskF_comp.date();
    if (!fecha) return std::nullopt;
    return Clave{f.glbEmpresa, subsistema(f), *fecha, codigo_documento(f), f.txtNum_doc.Text()};
}

Comprobante leer_pantalla(const frmQuorvel& f) {
    Comprobante c;
    if (f.estado.cortado) c.cheque = f.estado.cortado->cheque;
    c.empresa = f.glbEmpresa;
    c.usuario = f.glbUsuario;
    c.subsistema = subsistema(f);
    c.f_comp = f.mskF_comp.date();
    c.documento = codigo_documento(f);
    c.num_docum = f.txtNum_doc.Text();
    if (!f.glbBanderaNuevo &&
        f.estado.cargado) { // the key of a saved voucher is the one that it was read with
        c.empresa = f.estado.cargado->empresa;
        c.f_comp = f.estado.cargado->f_comp;
        c.documento = f.estado.cargado->documento;
        c.num_docum = f.estado.cargado->num_docum;
    }
    c.moneda = codigo(f.cmbMoneda, 2);
    c.concepto = f.txtconcepto.Text();
    c.estado = f.lblEstado.Caption();
    c.libro = f.cmblibro.Text();
    c.doc_libro = f.cmbdoc_libro.Text();
    c.num_ref = f.txtnum_ref.Text();
    c.fecha_factura = f.txtfecha_doc.date();
    c.fecha_pago = f.txtfecha_pago.date();
    c.rut_persona = f.txtrut_persona.Text();
    c.nombre = f.txtnombre.Text();
    c.apertura = f.chkApertura.Value() != 0;
    c.codigo_otro_impuesto = codigo(f.cmbcodigo_otro_impuesto, 3);
    c.tasa_impuesto_otro = f.txttasa_impuesto_otro.Text();
    c.activo_fijo = f.chkactivo_fijo.Value() != 0;
    c.codigo_no_recuperable = codigo(f.cmbcodigo_no_recuperable, 2);
    c.ifrs = norma(f);
    leer_montos(f, c);
    c.f_ult_modificacion = leer_fecha(f.lblF_ult_modificacion.Caption());
    c.lineas = lineas_de_grilla(f);
    c.adjuntos = entradas(f.lstadjunto);
    return c;
}

void permitir_identidad(frmQuorvel& f, bool editable) {
    ui::Control* const identidad[] = {&f.mskF_comp, &f.cmbDocumento, &f.txtNum_doc, &f.cmbMoneda};
    for (ui::Control* control : identidad) {
        control->SetEnabled(editable);
        control->SetToolTip(editable ? "" : "De un comprobante grabado se cambia con Cortar");
    }
}

void mostrar_comprobante(frmQuorvel& f, const Comprobante& c) {
    permitir_identidad(f, false);
    quitar_prestadas(f);
    mostrar_listas(f, c);
    f.mskF_comp.SetDate(c.f_comp);
    f.txtNum_doc.SetText(c.num_docum);
    f.txtconcepto.SetText(c.concepto);
    mostrar_totales(f, c.totales);
    f.chkApertura.SetValue(c.apertura ? 1 : 0);
    mostrar_libro(f, c);
    f.lblUsuario.SetCaption(nombre_usuario(f, c.usuario));
    f.lblF_ult_modificacion.SetCaption(c.f_ult_modificacion ? fecha_dmy(*c.f_ult_modificacion) : "");
    f.estado.cotizacion_exacta = c.cotizacion;
    f.estado.cotizacion_mostrada = c.cotizacion.formato(PATRON);
    f.txtCotizacion.SetText(f.estado.cotizacion_mostrada);
    f.lblEstado.SetCaption(c.estado);
    f.SetCaption(titulo(f));
    f.lblsubsistema.SetCaption(nombre_de(f.maestros[Maestro::subsistemas],
                                         "subsistema=" + sql_texto(c.subsistema), "subsistema",
                                         "n_subsistema", ""));
    f.estado.monto_neto = c.monto_neto;
    f.estado.monto_exento = c.monto_exento;
    f.estado.tasa_de_lineas = c.tasa_impuesto_otro;
    f.txtnro_correlativo.SetText(std::to_string(c.nro_correlativo));
    f.txtiva_activo_fijo.SetText(std::to_string(c.iva_activo_fijo));
}

std::string nombre_usuario(frmQuorvel& f, std::int64_t usuario) {
    const std::string codigo = std::to_string(usuario);
    return nombre_de(f.maestros[Maestro::personas], "persona=" + codigo, "persona", "n_persona", codigo);
}

void anotar_desenlace(frmQuorvel& f, const Desenlace& d, EnDuda cambio) {
    f.estado.en_duda = d.como == Desenlace::desconocido ? cambio : EnDuda::ninguno;
    if (d.como == Desenlace::adelantado) (void)f.borrador->conservar();
}

void avisar(frmQuorvel& f, const Rechazo& r) {
    switch (r.icono) {
    case Icono::critico: return f.critico(r.mensaje);
    case Icono::exclamacion: return f.exclamacion(r.mensaje);
    case Icono::informacion: return f.informacion(r.mensaje);
    }
}

std::string titulo(const frmQuorvel& f, const std::string& estado) {
    return f.cmbDocumento.Text() + " Nro." + f.txtNum_doc.Text() + " Fecha:" + f.mskF_comp.Text() +
           (estado.empty() ? "" : " " + estado);
}

std::string fila_texto(const std::vector<std::string>& celdas) {
    std::string fila;
    for (std::size_t i = 0; i < celdas.size(); ++i) fila += (i ? "\t" : "") + sin_controles(celdas[i]);
    return fila;
}

std::string fila_de(int numero, const Linea& l) {
    const auto monto = [](const std::optional<Decimal>& m) { return m ? m->formato(PATRON) : std::string(); };
    return fila_texto({std::to_string(numero), l.centro, l.auxiliar, monto(l.debe), monto(l.haber), l.glosa,
                       l.centro2, l.conciliado, l.num_ref, l.codigo_otro_impuesto, l.tasa_impuesto_otro});
}

std::vector<std::string> filas_de(const std::vector<Linea>& lineas) {
    std::vector<std::string> filas;
    filas.reserve(lineas.size());
    for (const Linea& l : lineas) filas.push_back(fila_de(static_cast<int>(filas.size()) + 1, l));
    return filas;
}

void reemplazar_lineas(frmQuorvel& f, const std::vector<Linea>& lineas, const Totales& totales) {
    f.grdDetalle.Clear();
    f.grdDetalle.AddItems(filas_de(lineas));
    mostrar_totales(f, totales);
    celda_movida(f); // another line stands where the cursor stands
}

void mostrar_totales(frmQuorvel& f, const Totales& totales) {
    f.estado.totales = totales.redondeados();
    f.lblTotalDebe.SetCaption(f.estado.totales.debe.formato(PATRON));
    f.lblTotalhaber.SetCaption(f.estado.totales.haber.formato(PATRON));
}

} // namespace quorvel
