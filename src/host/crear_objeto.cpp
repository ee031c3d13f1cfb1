#include "host/clases.h"
#include "text/letras_utf8.h"

namespace quorvel {

std::unique_ptr<ObjetoHost> crear_objeto(std::string_view clase, Servicios servicios) {
    if (igual_sin_caso(clase, "clsQuorvel")) return crear_clsQuorvel(std::move(servicios));
    if (igual_sin_caso(clase, "clsQuorvelRem")) return crear_clsQuorvelRem(std::move(servicios));
    return nullptr;
}

} // namespace quorvel
