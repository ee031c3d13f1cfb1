#include "assistants/libros.h"
#include "assistants/lineas.h"
#include "screen/asistentes/frmAsistente.h"
#include "screen/asistentes/pasos.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"

namespace quorvel {
namespace {

constexpr int BOLETA = 1; // second entry of both lists of kinds

void aplicar(frmQuorvel& f, const frmAsistente& d) {
    f.cmblibro.SetListIndex(RETENCIONES);
    f.cmbdoc_libro.SetListIndex(BOLETA);
    f.estado.retencion = {d.txtCuenta.Text(), d.txtauxiliar.Text(), d.lblCuenta.Caption(),
                          d.lblauxiliar.Caption()};
    DocumentoTributario doc;
    doc.cuenta = d.txtCuenta.Text();
    doc.auxiliar = d.txtauxiliar.Text();
    doc.aux_contraparte = auxiliar_contraparte(d.cmbAuxiliar);
    doc.total = d.txttotal.Text();
    reemplazar_lineas(f, lineas_retencion(doc, d.lbliva.Caption(), f.config, f.txtconcepto.Text()),
                      doc.total);
}

} // namespace

void asistente_retencion(frmQuorvel& f) {
    frmAsistente d(f.escritorio());
    preparar_sesion(f, d);
    d.gintlibro = RETENCIONES;
    d.Load();
    d.SetCaption("Asistente de Retenciones de Honorarios");
    d.lblimpuesto.SetCaption("Retención");
    d.cmbdoc_libro.SetListIndex(BOLETA);
    recordar_linea(f, f.estado.retencion, 0, true);
    const SeleccionRecordada& m = f.estado.retencion;
    d.txtCuenta.SetText(m.cuenta);
    d.lblCuenta.SetCaption(m.n_cuenta);
    d.txtauxiliar.SetText(m.auxiliar);
    d.lblauxiliar.SetCaption(m.n_auxiliar);
    d.habilitar_auxiliar();
    d.ShowModal();
    if (d.gblnaceptar) aplicar(f, d);
    d.Unload();
}

} // namespace quorvel
