#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace quorvel {
class Attachments;
}
namespace quorvel::dbtools {

class Base;

/// What a database lacks (tables, columns, indexes) and which of its data contradict each other, one sentence
/// each in Spanish; nothing when all is well. Reads only.
/// @param adjuntos base folder of the attached files (the one that holds "adjunto"); empty looks for no files
/// @throws ErrorSesion when the database cannot be read
[[nodiscard]] std::vector<std::string> revisar(const std::string& conexion,
                                               const std::filesystem::path& adjuntos = {});

/// Files that vouchers name and that are not there, one sentence each. @throws ErrorSesion
[[nodiscard]] std::vector<std::string> revisar_adjuntos(Base& base, const Attachments& archivos);

/// Creates the indexes that are missing, lets columns be null that older versions refused, and lets the
/// engine take new statistics.
/// @return how many were created
/// @throws ErrorSesion naming the index that the data refuse
int afinar(const std::string& conexion);

} // namespace quorvel::dbtools
