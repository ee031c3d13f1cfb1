#include "screen/borrador.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/comandos/procesado.h"
#include "screen/frmQuorvel.h"
#include "voucher/grabar.h"
#include "voucher/pasos.h"

namespace quorvel {

bool exigir_procesado(frmQuorvel& f) {
    if (!f.glbBanderaNuevo && f.lblEstado.Caption() == "P") return true;
    f.critico("Comprobante no válido");
    return false;
}

void anular(frmQuorvel& f) {
    if (f.estado.comprobante_cierre)
        return f.critico("Comprobante de Cierre anual no puede ser anulado,\r\n Pero puede ser modificado o "
                         "vuelto a generar");
    if (!exigir_procesado(f)) return;
    if (!f.pregunta("Esta seguro que desea anular el Comprobante Contable\r\nNota: Una vez Anulado no es "
                    "posible recuperarlo"))
        return;
    const Comprobante c = leer_pantalla(f);
    const bool ya = f.estado.en_duda == EnDuda::anular && esta_anulado(*f.glbdb, c.clave());
    const Desenlace d =
        ya ? Desenlace()
           : AnularComprobante(*f.glbdb, c, c.f_ult_modificacion.value_or(f.servicios.reloj.hoy()),
                               f.estado.huella_guardada);
    anotar_desenlace(f, d, EnDuda::anular);
    if (!d) return avisar(f, d.rechazo);
    f.lblEstado.SetCaption("X");
    f.estado.cargado->estado = "X";
    f.informacion("Comprobante Anulado");
    f.SetCaption(titulo(f, "X"));
    const Totales totales = f.estado.totales;
    f.grdDetalle.Clear();
    mostrar_totales(f, totales); // the header keeps its totals
    permitir_cambios(f, false, false, false, ANULADO);
    f.mnuEliminar.SetEnabled(true); // it answers that there is nothing to delete
}

} // namespace quorvel
