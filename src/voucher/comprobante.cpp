#include "voucher/comprobante.h"

#include "text/letras_utf8.h"

namespace quorvel {

std::string nombrar(const Clave& k) {
    return "documento " + recortar_fin(k.documento) + ", Nro." + recortar_fin(k.num_docum) + ", " +
           fecha_dmy(k.f_comp);
}

Totales totales_de(const std::vector<Linea>& lineas) {
    Totales t;
    for (const Linea& l : lineas) {
        if (l.debe) t.debe = t.debe + *l.debe;
        if (l.haber) t.haber = t.haber + *l.haber;
    }
    return t;
}

} // namespace quorvel
