#include "oficina/problemas.h"

#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel::oficina {

std::string texto(const Problema& p) {
    std::string t = p.archivo;
    if (p.linea > 0) t += ":" + std::to_string(p.linea);
    if (!t.empty()) t += ": ";
    if (!p.campo.empty()) t += p.campo + ": ";
    return recortar_fin(sin_controles(reemplazar(t + p.mensaje, "\r\n", "")));
}

Salida salida_de(const std::vector<Problema>& problemas) {
    if (std::ranges::any_of(problemas, &Problema::ilegible)) return SIN_DATOS;
    return problemas.empty() ? BIEN : RECHAZADO;
}

} // namespace quorvel::oficina
