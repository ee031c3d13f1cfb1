#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace quorvel::dbtools {

/// The program's data folder: the environment's QUORVEL_DATA, else share/quorvel beside the program's bin,
/// else the source tree's. @throws std::runtime_error when there is none
[[nodiscard]] std::filesystem::path carpeta_datos();
/// The person's own folder: settings, attached files, report database, recent databases.
[[nodiscard]] std::filesystem::path carpeta_personal();
/// The whole text of a file of the data folder, such as "schema/sqlite.sql".
/// @throws std::runtime_error when it is in none of them
[[nodiscard]] std::string leer_dato(const std::string& nombre);
/// Rows of a file of values separated by ";"; the first line names the columns, blank lines and lines that
/// begin with "#" are skipped.
[[nodiscard]] std::vector<std::vector<std::string>> leer_tabla(const std::string& nombre);

} // namespace quorvel::dbtools
