#include "interchange/archivo_comprobante.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"
#include "screen/papeles/ocupado.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

namespace quorvel {

namespace {

void primera(ui::ComboBox& lista) {
    if (lista.ListCount() > 0) lista.SetListIndex(0);
}
/// An empty field selects the first entry, an unknown one leaves the selection.
void por_texto(ui::ComboBox& lista, const std::string& texto) {
    if (texto.empty())
        primera(lista);
    else
        lista.select_text(texto);
}
void por_codigo(frmQuorvel& f, ui::ComboBox& lista, std::size_t n, const std::string& codigo) {
    if (codigo.empty())
        primera(lista);
    else
        (void)seleccionar_codigo(f, lista.name().c_str(), n, codigo);
}
/// "001" and "1" are one document kind.
void elegir_documento(ui::ComboBox& lista, const std::string& documento) {
    const std::int64_t codigo = val_entero(documento);
    for (int i = 0; i < lista.ListCount(); ++i)
        if (val_entero(primeros(lista.List(i), 3)) == codigo) return lista.SetListIndex(i);
}

/// In the order of the file's use: choosing the kind proposes a number, which the file's own then replaces.
void mostrar_cabecera(frmQuorvel& f, const Comprobante& c) {
    f.mskF_comp.SetDate(c.f_comp);
    elegir_documento(f.cmbDocumento, c.documento);
    f.txtNum_doc.SetText(c.num_docum);
    f.txtconcepto.SetText(c.concepto);
    f.txtrut_persona.SetText(c.rut_persona);
    f.txtnum_ref.SetText(c.num_ref);
    mostrar_totales(f, c.totales);
    f.txtnombre.SetText(c.nombre);
    f.txtfecha_doc.SetDate(c.fecha_factura);
    f.txtfecha_pago.SetDate(c.fecha_pago);
    por_codigo(f, f.cmbcodigo_no_recuperable, 2, c.codigo_no_recuperable);
    f.chkactivo_fijo.SetValue(c.activo_fijo ? 1 : 0);
    f.chkApertura.SetValue(c.apertura ? 1 : 0);
    f.txttasa_impuesto_otro.SetText(c.tasa_impuesto_otro);
    f.estado.monto_neto = c.monto_neto;
    f.estado.monto_exento = c.monto_exento;
    por_codigo(f, f.cmbifrs, 1, c.ifrs);
    por_codigo(f, f.cmbcodigo_otro_impuesto, 3, c.codigo_otro_impuesto);
    por_texto(f.cmblibro, c.libro);
    por_texto(f.cmbdoc_libro, c.doc_libro);
}

ComprobanteImportado leer(frmQuorvel& f, const std::string& archivo) {
    const Ocupado ocupado(f.escritorio());
    return interpretar_archivo(leer_archivo(archivo), [&](long hechas, long total) {
        return f.escritorio().progress("Importando comprobante", hechas, total);
    });
}

} // namespace

void importar_csv(frmQuorvel& f) {
    const auto archivo =
        f.escritorio().ask_file({"Importar comprobante a archivo formato CSV", "*.csv", "", false});
    if (!archivo) return;
    const ComprobanteImportado leido = leer(f, *archivo); // an unreadable file leaves the screen as it is
    limpiar_para_nuevo(f);
    if (!leido.reconocido) return;
    f.grdDetalle.Clear();
    if (leido.con_cabecera) mostrar_cabecera(f, leido.c);
    f.grdDetalle.AddItems(filas_de(leido.c.lineas));
    if (leido.sobran_campos) f.exclamacion("El archivo tiene campos de más, que no se leyeron");
}

} // namespace quorvel
