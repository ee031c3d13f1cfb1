#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"

namespace quorvel {

void nuevo(frmQuorvel& f) {
    limpiar_para_nuevo(f);
    f.cmbDocumento.SetFocus();
}

void salir(frmQuorvel& f) { f.Unload(); }

} // namespace quorvel
