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

struct Afinado {
    int indices = 0;       ///< created
    bool historia = false; ///< its tables were created
    long versiones = 0;    ///< with which the companies' histories began
};
/// Creates the indexes that are missing, lets columns be null that older versions refused, gives a database
/// without history its tables and begins the history of each company with what stands, and lets the engine
/// take new statistics.
/// @throws ErrorSesion naming the index that the data refuse
Afinado afinar(const std::string& conexion);

/// What contradicts a code of the history that was written down, see codigo_historia(). @throws ErrorSesion
[[nodiscard]] std::vector<std::string> revisar_codigo(const std::string& conexion, const std::string& codigo);

} // namespace quorvel::dbtools
