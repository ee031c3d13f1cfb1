#pragma once
#include <filesystem>
#include <optional>
#include <string>

class QWidget;

namespace quorvel::app {

// Backup and restore with their dialogs: where, how far, and how it ended. Cancelled, nothing is left behind.

/// Asks for a folder and copies a database and its attachments into it while people go on working.
void respaldar_base(const std::string& conexion, QWidget* owner);
/// Asks for a backup and puts it into a database that is new, or that the person agrees to lose.
/// @param servidor where the backup of a server's database goes; empty when no server is chosen
/// @return the connection of the database, nothing when it was left or failed
[[nodiscard]] std::optional<std::string> restaurar_base(const std::string& servidor, QWidget* owner);

/// What respaldar_base does once it knows where. @return what the person reads, problems too
[[nodiscard]] std::string hacer_respaldo(const std::string& conexion, const std::filesystem::path& carpeta,
                                         const std::filesystem::path& adjuntos, QWidget* owner);
struct Restauracion {
    bool hecha = false;
    std::string texto; ///< what the person reads
};
/// What restaurar_base does once it knows where. @param reemplazar the person agrees to lose what is there
[[nodiscard]] Restauracion poner_respaldo(const std::filesystem::path& respaldo, const std::string& conexion,
                                          const std::filesystem::path& adjuntos, bool reemplazar,
                                          QWidget* owner);

} // namespace quorvel::app
