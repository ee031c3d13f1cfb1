#pragma once
#include <string>
#include <vector>

namespace quorvel {

/// What a schema script creates, read from the script itself so that nothing is written down twice.
struct Tabla {
    std::string nombre;
    std::vector<std::string> columnas;
};
struct Indice {
    std::string nombre;
    std::string sentencia; ///< the statement that creates it
};
struct Esquema {
    std::vector<Tabla> tablas;
    std::vector<Indice> indices;
};
/// Reads "create table" and "create [unique] index" statements.
[[nodiscard]] Esquema leer_esquema(const std::string& guion);

} // namespace quorvel
