#pragma once
#include "platform/db/clsConexion.h"

#include <cstdint>
#include <string>
#include <variant>

namespace quorvel {

/// A value on its way between a late-bound host and an object: nothing, a number, a text or a session.
using Variant = std::variant<std::monostate, std::int64_t, double, std::string, clsConexion*>;

} // namespace quorvel
