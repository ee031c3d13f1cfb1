#pragma once
#include <string>
#include <vector>

namespace quorvel {

/// The whole text of a file of the data folder, such as "schema/sqlite.sql". The folder is the environment's
/// QUORVEL_DATA, else the source tree's, else the installed one.
/// @throws std::runtime_error when it is in none of them
[[nodiscard]] std::string leer_dato(const std::string& nombre);
/// Rows of a file of values separated by ";"; the first line names the columns, blank lines and lines that
/// begin with "#" are skipped.
[[nodiscard]] std::vector<std::vector<std::string>> leer_tabla(const std::string& nombre);

} // namespace quorvel
