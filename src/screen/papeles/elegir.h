#pragma once
#include "platform/db/clsConexion.h"
#include "platform/ui/escritorio.h"

#include <optional>
#include <string>

namespace quorvel {

/// What a lookup form returned.
struct Eleccion {
    std::string codigo, nombre;
};
/// Counterparts that vouchers have used: RUT and name. @return nothing when cancelled
[[nodiscard]] std::optional<Eleccion> elegir_persona(ui::Escritorio& escritorio, clsConexion& db);
/// Bank accounts that cheques have used: bank and account.
[[nodiscard]] std::optional<Eleccion> elegir_cuenta(ui::Escritorio& escritorio, clsConexion& db);

} // namespace quorvel
