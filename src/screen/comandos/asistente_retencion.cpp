#include "assistants/libros.h"
#include "assistants/retencion_legal.h"
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
    f.estado.retencion = leer_seleccion(d);
    reemplazar_lineas(f, d.lineas, d.totales);
}

/// Of the document, or of the voucher while the document has no date.
int anio_del_documento(const frmQuorvel& f) {
    const auto fecha = f.txtfecha_doc.date() ? f.txtfecha_doc.date() : f.mskF_comp.date();
    return anio(fecha.value_or(f.servicios.reloj.hoy()));
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
    mostrar_seleccion(d, f.estado.retencion);
    d.cmbporcentaje.select_text(porcentaje_legal(anio_del_documento(f)));
    d.ShowModal();
    if (d.gblnaceptar) aplicar(f, d);
    d.Unload();
}

} // namespace quorvel
