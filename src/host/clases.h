#pragma once
#include "host/objeto_host.h"

namespace quorvel {

[[nodiscard]] std::unique_ptr<ObjetoHost> crear_clsQuorvel(Servicios servicios);
[[nodiscard]] std::unique_ptr<ObjetoHost> crear_clsQuorvelRem(Servicios servicios);

} // namespace quorvel
