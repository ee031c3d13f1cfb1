#include "screen/asistentes/pasos.h"

#include "platform/db/literal.h"
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

std::string auxiliar_contraparte(const ui::ComboBox& auxiliares) { return primeros(auxiliares.Text(), 6); }

} // namespace quorvel
