#pragma once
#include "dbtools/avance.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quorvel::dbtools {

// A backup is a folder: the database in one file ("base.db", "base.dump"), the attached files in
// "adjunto/SET/NAME", whatever the database's name, and the list of both ("contenido.sha256").
// The base folder of the attachments is the one that holds "adjunto".

struct Respaldado {
    std::size_t adjuntos = 0;
    std::vector<std::string>
        faltan; ///< attached files that the database names and nobody has, a sentence each
};
/// Copies a database and its attachments while people go on working in it.
/// @param destino a folder that is empty or does not exist; when the copy fails, what was copied goes away
/// @throws std::runtime_error, ErrorSesion
[[nodiscard]] Respaldado respaldar(const std::string& conexion, const std::filesystem::path& destino,
                                   const std::filesystem::path& adjuntos, const AvancePartes& avance);

/// Compares a backup with its list: what is missing, changed or too much.
/// @throws std::runtime_error when it has no list, or one that is no backup's
[[nodiscard]] std::vector<std::string> verificar(const std::filesystem::path& respaldo,
                                                 const AvancePartes& avance);

struct Restaurado {
    std::size_t adjuntos = 0;
    std::filesystem::path
        anteriores; ///< where the database's earlier attachments are now; empty: there were none
};
/// Puts a verified backup back, into a database of the same engine under whatever name.
/// @param reemplazar whether a database with tables and its attachments may be replaced; without it nothing
/// that is there changes
/// @throws std::runtime_error, ErrorSesion; the database is what it was then
[[nodiscard]] Restaurado restaurar(const std::filesystem::path& respaldo, const std::string& conexion,
                                   const std::filesystem::path& adjuntos, bool reemplazar,
                                   const AvancePartes& avance);

} // namespace quorvel::dbtools
