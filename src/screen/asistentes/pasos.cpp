#include "screen/asistentes/pasos.h"

#include "screen/asistentes/frmAsistente.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "screen/maestro.h"
#include "text/letras_utf8.h"
#include "voucher/chart.h"

namespace quorvel {
void preparar_sesion(frmQuorvel& f, SesionAsistente& d) {
    d.gdb = f.glbdb;
    d.maestros = &f.maestros;
    d.gstrrut = f.txtrut_persona.Text();
    d.gstrnombre = f.txtnombre.Text();
    d.concepto = f.txtconcepto.Text();
    d.config = &f.config;
}

void preseleccionar_documento(const frmQuorvel& f, ui::ComboBox& documentos) {
    if (!documentos.select_text(f.cmbdoc_libro.Text())) documentos.SetListIndex(-1);
}

void recordar_linea(frmQuorvel& f, SeleccionRecordada& memoria, int fila, bool con_auxiliar) {
    if (!f.glbBanderaNuevo) memoria = {}; // names and auxiliary of another document must not stay behind
    if (f.grdDetalle.Rows() <= 1 || !memoria.cuenta.empty()) return;
    memoria.cuenta = recortar_fin(f.grdDetalle.TextMatrix(fila, CUENTA));
    if (!buscar_codigo(f.maestros[Maestro::cuentas], "centro", memoria.cuenta)) return;
    memoria.n_cuenta = campo(f.maestros[Maestro::cuentas], "n_centro");
    if (!con_auxiliar || !exige_auxiliar(f.maestros[Maestro::cuentas].fields("req_auxiliar").Value)) return;
    memoria.auxiliar = recortar_fin(f.grdDetalle.TextMatrix(fila, AUXILIAR));
    if (buscar_codigo(f.maestros[Maestro::auxiliares], "auxiliar", memoria.auxiliar))
        memoria.n_auxiliar = campo(f.maestros[Maestro::auxiliares], "n_auxiliar");
}

void mostrar_seleccion(frmAsistente& d, const SeleccionRecordada& memoria) {
    d.txtCuenta.SetText(memoria.cuenta);
    d.lblCuenta.SetCaption(memoria.n_cuenta);
    d.txtauxiliar.SetText(memoria.auxiliar);
    d.lblauxiliar.SetCaption(memoria.n_auxiliar);
    d.habilitar_auxiliar();
}

SeleccionRecordada leer_seleccion(const frmAsistente& d) {
    return {d.txtCuenta.Text(), d.txtauxiliar.Text(), d.lblCuenta.Caption(), d.lblauxiliar.Caption()};
}

} // namespace quorvel
