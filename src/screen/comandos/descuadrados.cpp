#include "yearend/descuadrados.h"

#include "screen/comandos/comandos.h"
#include "screen/comandos/con_avance.h"
#include "screen/frmQuorvel.h"

namespace quorvel {

void descuadrados(frmQuorvel& f) {
    std::string lista;
    if (!con_avance(f, "Buscando comprobantes descuadrados",
                    [&](const Avance&) { lista = lista_descuadrados(*f.glbdb); }))
        return;
    f.informacion(lista.empty() ? "No existen comprobantes descuadrados"
                                : "Lista de Comprobantes descuadrados " + lista);
}

} // namespace quorvel
