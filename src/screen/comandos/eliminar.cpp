#include "screen/borrador.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/comandos/procesado.h"
#include "screen/frmQuorvel.h"
#include "voucher/grabar.h"

namespace quorvel {

std::string eliminar_cargado(frmQuorvel& f, const char* operacion) {
    const Clave clave = f.estado.cargado->clave();
    if (f.estado.en_duda == EnDuda::eliminar && esta_eliminado(*f.glbdb, clave)) return {};
    const auto r = EliminarComprobante(*f.glbdb, clave, f.glbUsuario, f.estado.huella_guardada, operacion);
    f.estado.en_duda = en_duda(r.error, EnDuda::eliminar);
    if (cambiado_por_otro(r.error)) (void)f.borrador->conservar();
    // a cheque may have been issued since the voucher was opened
    if (r.quien) f.estado.cargado->cheque = r.quien->cheque;
    return r.error;
}

void eliminar(frmQuorvel& f) {
    if (!exigir_procesado(f)) return;
    if (!f.pregunta("Esta seguro que desea eliminar el Comprobante Contable\r\nNota: Una vez eliminado no es "
                    "posible recuperarlo"))
        return;
    const std::string error = eliminar_cargado(f, operacion::ELIMINADO);
    if (!error.empty()) return f.critico(error);
    limpiar_para_nuevo(f);
}

} // namespace quorvel
