#pragma once
#include "platform/ui/ctlConsulta.h"
#include "text/fecha.h"

#include <optional>
#include <string>

namespace quorvel {

/// What a person looks for with one line of text: words of the gloss or the name, numbers, amounts, a RUT,
/// each as people write it. A date or a month (10/2026) says where to look.
struct Busqueda {
    ui::ctlConsulta::Words palabras;
    std::optional<Fecha> desde, hasta;
};
/// @param hoy whose year a date without one is of
[[nodiscard]] Busqueda leer_busqueda(const std::string& texto, Fecha hoy);

} // namespace quorvel
