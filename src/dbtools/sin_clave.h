#pragma once
#include <string>

namespace quorvel::dbtools {

/// A connection text without its password, as it may be kept and shown.
[[nodiscard]] std::string sin_clave(const std::string& conexion);

} // namespace quorvel::dbtools
