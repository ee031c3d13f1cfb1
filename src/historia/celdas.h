#pragma once
#include <string>
#include <vector>

namespace quorvel {

/// Cells of a version's header or of the names of its files, as texts; nothing for a text that is no such
/// list.
[[nodiscard]] std::vector<std::string> leer_celdas(const std::string& lista);
/// Cells of each of its lines.
[[nodiscard]] std::vector<std::vector<std::string>> leer_filas(const std::string& listas);
/// The same contents, whichever engine wrote them: 890.5 is 890.50.
[[nodiscard]] bool mismas_celdas(const std::string& una, const std::string& otra);

} // namespace quorvel
