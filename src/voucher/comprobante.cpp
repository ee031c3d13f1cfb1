#include "voucher/comprobante.h"

namespace quorvel {

Totales totales_de(const std::vector<Linea>& lineas) {
    Totales t;
    for (const Linea& l : lineas) {
        if (l.debe) t.debe = t.debe + *l.debe;
        if (l.haber) t.haber = t.haber + *l.haber;
    }
    return t;
}

} // namespace quorvel
