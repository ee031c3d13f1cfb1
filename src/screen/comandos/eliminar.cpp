#include "screen/borrador.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/comandos/procesado.h"
#include "screen/frmQuorvel.h"
#include "voucher/grabar.h"

namespace quorvel {

Desenlace eliminar_cargado(frmQuorvel& f, const char* operacion) {
    const Clave clave = f.estado.cargado->clave();
    if (f.estado.en_duda == EnDuda::eliminar && esta_eliminado(*f.glbdb, clave)) return {};
    const auto r = EliminarComprobante(*f.glbdb, clave, f.glbUsuario, f.estado.huella_guardada, operacion);
    anotar_desenlace(f, r.desenlace, EnDuda::eliminar);
    // a cheque may have been issued since the voucher was opened
    if (r.quien) f.estado.cargado->cheque = r.quien->cheque;
    return r.desenlace;
}

void eliminar(frmQuorvel& f) {
    if (!exigir_procesado(f)) return;
    if (!f.pregunta("Esta seguro que desea eliminar el Comprobante Contable\r\nNota: Una vez eliminado no es "
                    "posible recuperarlo"))
        return;
    const Desenlace d = eliminar_cargado(f, operacion::ELIMINADO);
    if (!d) return avisar(f, d.rechazo);
    limpiar_para_nuevo(f);
}

} // namespace quorvel
