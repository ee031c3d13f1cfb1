#pragma once
#include "platform/db/clsConexion.h"
#include "text/fecha.h"

#include <string>

namespace quorvel::demo {

/// A month's purchases as the tax authority would tell them to the demonstration company: most as they are
/// booked, one missing, one with another amount, and documents that nobody has entered yet.
struct RegistroDemo {
    std::string nombre, bytes; ///< the usual file name; UTF-8, CR LF
};
/// @param mes any day of the month @throws ErrorSesion
[[nodiscard]] RegistroDemo registro_demo(clsConexion& db, Fecha mes);

} // namespace quorvel::demo
