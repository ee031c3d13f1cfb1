#include "assistants/libros.h"
#include "screen/asistentes/frmAsistente2.h"
#include "screen/asistentes/pasos.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"

namespace quorvel {
namespace {

void proponer(frmQuorvel& f, frmAsistente2& d) {
    recordar_linea(f, f.estado.socio, 1, true);
    recordar_linea(f, f.estado.banco, 0, false);
    d.txtCuenta.SetText(f.estado.banco.cuenta);
    d.lblCuenta.SetCaption(f.estado.banco.n_cuenta);
    d.txtCuenta2.SetText(f.estado.socio.cuenta);
    d.lblCuenta2.SetCaption(f.estado.socio.n_cuenta);
    d.txtAuxiliar2.SetText(f.estado.socio.auxiliar);
    d.lblauxiliar2.SetCaption(f.estado.socio.n_auxiliar);
    d.habilitar_auxiliar();
    d.txttotal.SetText(f.estado.totales.debe.formato("#,##0"));
}

void aplicar(frmQuorvel& f, const frmAsistente2& d) {
    f.cmblibro.SetListIndex(RET_SOCIO);
    f.cmbdoc_libro.select_text(d.cmbdoc_libro.Text());
    f.estado.socio = {d.txtCuenta2.Text(), d.txtAuxiliar2.Text(), d.lblCuenta2.Caption(),
                      d.lblauxiliar2.Caption()};
    f.estado.banco = {d.txtCuenta.Text(), "", d.lblCuenta.Caption(), ""};
    reemplazar_lineas(f, d.lineas, d.totales);
}

} // namespace

void asistente_retiro_socio(frmQuorvel& f) {
    frmAsistente2 d(f.escritorio());
    preparar_sesion(f, d);
    d.Load();
    preseleccionar_documento(f, d.cmbdoc_libro);
    proponer(f, d);
    d.ShowModal();
    if (d.gblnaceptar) aplicar(f, d);
    d.Unload();
}

} // namespace quorvel
