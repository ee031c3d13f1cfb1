#pragma once
#include <set>
#include <string>
#include <vector>

namespace quorvel::dbtools {

/// What a schema script creates, read from the script itself so that nothing is written down twice.
struct Tabla {
    std::string nombre;
    std::vector<std::string> columnas;
    std::vector<std::string> anulables; ///< of those, the ones that may be null
    std::string sentencia;              ///< the statement that creates it
};
struct Indice {
    std::string nombre;
    std::string sentencia; ///< the statement that creates it
};
struct Esquema {
    std::vector<Tabla> tablas;
    std::vector<Indice> indices;
};
/// The definition of a table, as the engine keeps it, without "not null" in some of its columns.
[[nodiscard]] std::string sin_obligacion(const std::string& definicion,
                                         const std::set<std::string>& columnas);
/// Reads "create table" and "create [unique] index" statements.
[[nodiscard]] Esquema leer_esquema(const std::string& guion);

} // namespace quorvel::dbtools
