#pragma once
#include "voucher/rechazo.h"

#include <utility>

namespace quorvel {

/// What the user reads after he ended a piece of work himself.
inline constexpr const char* CANCELADA = "Operación cancelada, no se ha cambiado nada";

/// How a change of the database ended.
struct Desenlace {
    enum Como : std::uint8_t {
        hecho,
        rechazado,  ///< nothing was changed
        adelantado, ///< the same, because somebody else has changed or removed the voucher meanwhile
        cancelado,  ///< the person ended it: nothing was changed
        desconocido ///< the answer to the commit was lost
    };
    Como como = hecho;
    Rechazo rechazo{}; ///< what to tell unless it is done

    Desenlace() = default;
    Desenlace(Rechazo r) : como(rechazado), rechazo(std::move(r)) {} // NOLINT: a refusal is an outcome
    Desenlace(Como c, std::string mensaje)
        : como(c), rechazo{std::move(mensaje), c == cancelado ? Icono::informacion : Icono::critico} {}
    [[nodiscard]] explicit operator bool() const { return como == hecho; }
    [[nodiscard]] const std::string& mensaje() const { return rechazo.mensaje; }
};

} // namespace quorvel
