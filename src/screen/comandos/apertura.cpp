#include "yearend/apertura.h"

#include "screen/comandos/asiento_anual.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"

namespace quorvel {
namespace {

void generar(frmQuorvel& f, bool por_documento) {
    const auto fecha = f.mskF_comp.date();
    if (!fecha) {
        f.critico("Ingrese fecha");
        f.mskF_comp.SetFocus();
        return;
    }
    const int abre = anio(*fecha);
    const std::string texto_anio = std::to_string(abre);
    if (!f.pregunta("Desea Generar Comprobante para Apertura,  \r\n para el año " + texto_anio)) return;
    const int norma = f.cmbifrs.ListIndex(); // a new voucher would select the first again
    if (norma < 1) return f.informacion("Seleccione la norma TRIBUTARIA o IFRS, no puede ser ambas");
    if (!aceptar_descuadrados(f, abre - 1)) return;
    const bool otro = f.chkApertura.Value() == 0 && !f.glbBanderaNuevo;
    const std::string glosa = otro ? "ASIENTO APERTURA " + texto_anio : f.txtconcepto.Text();
    const auto asiento = generar_con_avance(f, [&](const Avance& avance) {
        return generar_apertura(
            *f.glbdb, {f.glbEmpresa, abre, f.cmbifrs.Text().substr(0, 1), glosa, por_documento}, avance);
    });
    if (!asiento) return;
    if (otro) {
        nuevo_asiento(f, fecha->year() / std::chrono::January / 1, glosa);
        f.cmbifrs.SetListIndex(norma);
    } else {
        f.grdDetalle.Clear();
        f.estado.cierre_generado = false;
    }
    agregar_lineas(f, *asiento);
    f.chkApertura.SetValue(1);
}

} // namespace

void apertura(frmQuorvel& f) { generar(f, false); }
void apertura_doc(frmQuorvel& f) { generar(f, true); }

} // namespace quorvel
