#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/comandos/procesado.h"
#include "screen/frmQuorvel.h"
#include "voucher/grabar.h"

namespace quorvel {

void eliminar(frmQuorvel& f) {
    if (!exigir_procesado(f)) return;
    if (!f.pregunta("Esta seguro que desea eliminar el Comprobante Contable\r\nNota: Una vez eliminado no es "
                    "posible recuperarlo"))
        return;
    const std::string error = EliminarComprobante(*f.glbdb, f.estado.cargado->clave(),
                                                  f.estado.cargado->comprobante_adjunto, f.glbUsuario);
    if (!error.empty()) return f.critico(error);
    limpiar_para_nuevo(f);
}

} // namespace quorvel
