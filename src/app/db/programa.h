#pragma once
#include <string>
#include <vector>

namespace quorvel {

/// Runs another program, without a shell, and waits for its end.
/// @param orden its name, looked for where programs are, and its arguments, which everybody can read
/// @param ambiente "NAME=value" on top of this process' own, which only its user can read
/// @param paquete what to install when the program is not there
/// @throws std::runtime_error with what the program said, when it did not end well
void ejecutar_programa(const std::vector<std::string>& orden, const std::vector<std::string>& ambiente,
                       const std::string& paquete);

} // namespace quorvel
