#pragma once
#include <functional>
#include <string>
#include <vector>

namespace quorvel::dbtools {

/// Hears each line that a program says, as it comes, and an empty one whenever it is silent for a moment;
/// what this throws ends the program. @return whether it tells why the program fails
using Oyente = std::function<bool(const std::string& linea)>;

/// Runs another program, without a shell, and waits for its end.
/// @param orden its name, looked for where programs are, and its arguments, which everybody can read
/// @param ambiente "NAME=value" on top of this process' own, which only its user can read
/// @param paquete what to install when the program is not there
/// @throws std::runtime_error with the lines that tell why, when it did not end well
void ejecutar_programa(const std::vector<std::string>& orden, const std::vector<std::string>& ambiente,
                       const std::string& paquete, const Oyente& oye);

} // namespace quorvel::dbtools
