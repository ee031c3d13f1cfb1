#pragma once
#include "platform/db/clsConexion.h"

namespace quorvel {

/// Whether no voucher but one has this attachment set, so that its rows may be written over or go. Set 0 is
/// nobody's. @throws ErrorSesion
[[nodiscard]] bool solo_de_uno(clsConexion& db, std::int64_t conjunto);
/// Whether the set can become a voucher's: nobody has it, and nobody is about to take it. Inside a
/// transaction, which keeps it until its end. @throws ErrorSesion
[[nodiscard]] bool conjunto_libre(clsConexion& db, std::int64_t conjunto);

} // namespace quorvel
