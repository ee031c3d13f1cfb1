#pragma once
#include <cstdint>
#include <optional>
#include <string>

namespace quorvel {

enum class Icono : std::uint8_t { critico, exclamacion, informacion };

/// A rule says no: what to show and where the focus goes.
struct Rechazo {
    std::string mensaje;
    Icono icono = Icono::critico;
    std::string foco;                 ///< control name, empty: stay
    std::optional<int> fila, columna; ///< grid cell that becomes current
    std::string sobre{};              ///< control that it is about when the focus stays
};

} // namespace quorvel
