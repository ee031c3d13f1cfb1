#include "yearend/descuadrados.h"

#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"

namespace quorvel {

void descuadrados(frmQuorvel& f) {
    const std::string lista = lista_descuadrados(*f.glbdb);
    f.informacion(lista.empty() ? "No existen comprobantes descuadrados"
                                : "Lista de Comprobantes descuadrados " + lista);
}

} // namespace quorvel
