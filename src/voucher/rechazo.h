#pragma once
#include "voucher/campo.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quorvel {

enum class Icono : std::uint8_t { critico, exclamacion, informacion };

/// A rule says no: what to show and what it is about.
struct Rechazo {
    std::string mensaje;
    Icono icono = Icono::critico;
    Campo campo = Campo::ninguno;
    bool va = true;                       ///< the focus goes to the field
    std::optional<int> fila{}, columna{}; ///< grid cell that becomes current
};

} // namespace quorvel
