#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace quorvel::app {

/// Databases that were opened before, the last one first; a text file, one connection a line.
[[nodiscard]] std::vector<std::string> leer_recientes(const std::filesystem::path& archivo);
/// Puts a connection first; passwords of a server's connection are not kept.
void anotar_reciente(const std::filesystem::path& archivo, const std::string& conexion);
/// Takes a connection off the list.
void olvidar_reciente(const std::filesystem::path& archivo, const std::string& conexion);

} // namespace quorvel::app
