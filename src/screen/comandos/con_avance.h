#pragma once
#include "voucher/pasos.h"
#include "yearend/asiento.h"

#include <functional>
#include <string>

namespace quorvel {

class frmQuorvel;

/// Runs work that only reads under a progress box that the person may cancel, also while the engine works.
/// @return false when cancelled, which has been said
[[nodiscard]] bool con_avance(frmQuorvel& f, const std::string& que,
                              const std::function<void(const Avance&)>& trabajo);

} // namespace quorvel
