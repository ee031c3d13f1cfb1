#pragma once
#include <string>

namespace quorvel::bench {

/// What the engine would do for a statement of the dialect, one step a line. @throws ErrorSesion
[[nodiscard]] std::string plan(const std::string& conexion, const std::string& sql);
/// Whether a plan reads a vouchers' table from one end to the other.
[[nodiscard]] bool recorre_todo(const std::string& plan);

} // namespace quorvel::bench
