#pragma once
#include "screen/borrador.h"

class QWidget;

namespace quorvel::app {

/// Shows drafts and lets one be taken back or thrown away. Nothing is asked when there is none.
/// @return nothing: later
[[nodiscard]] std::optional<std::filesystem::path> elegir_borrador(const std::vector<BorradorLibre>& libres,
                                                                   QWidget* owner);

} // namespace quorvel::app
