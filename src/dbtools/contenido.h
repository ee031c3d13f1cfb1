#pragma once
#include "dbtools/avance.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace quorvel::dbtools {

/// The list of what a backup holds, a file of its folder that "sha256sum -c" reads.
constexpr const char* LISTA_CONTENIDO = "contenido.sha256";
/// Files of a backup, by their path inside its folder, with their SHA-256 in hexadecimal digits.
using Contenido = std::map<std::string, std::string>;

/// Reads every file below a folder but for the list itself. What is neither file nor folder has no sum.
/// @throws std::runtime_error naming the file that cannot be read
[[nodiscard]] Contenido sumar(const std::filesystem::path& carpeta, const AvancePartes& avance);
/// Everything of the folder and then the list reach the disk, so that a list is never there without the rest.
/// @throws std::runtime_error
void escribir_contenido(const std::filesystem::path& carpeta, const Contenido& contenido);
/// @throws std::runtime_error when there is no list (the backup was not finished), a line is no line of a
/// list or names a place where a backup has no files
[[nodiscard]] Contenido leer_contenido(const std::filesystem::path& carpeta);
/// What is missing, changed or too much, one sentence each.
[[nodiscard]] std::vector<std::string> comparar(const Contenido& lista, const Contenido& presente);

/// Waits until everything written to a folder's file system is on the disk. @throws std::runtime_error
void sincronizar(const std::filesystem::path& carpeta);

} // namespace quorvel::dbtools
