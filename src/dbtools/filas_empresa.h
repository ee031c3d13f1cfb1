#pragma once
#include "dbtools/base.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvel::dbtools {

/// A table of a company, or the shared rows that go with one.
struct TablaMovida {
    std::string nombre;
    std::vector<std::string> columnas;
};
/// A row's cells in the order of the columns; null is nothing. Texts keep their trailing blanks.
using Celdas = std::vector<std::optional<std::string>>;

/// Codes that are other ones in the database where a company arrives.
struct Codigos {
    int empresa = 0;
    std::int64_t conjuntos = 0, correlativos = 0; ///< are added to the numbers of attachment sets and files
    std::map<std::string, std::string> usuarios, personas;
};

/// @param condicion in words of both engines, " where …"
[[nodiscard]] std::vector<Celdas> leer_filas(Base& base, const TablaMovida& tabla,
                                             const std::string& condicion);
void escribir_filas(Base& base, const TablaMovida& tabla, const std::vector<Celdas>& filas);
/// The row as it stands where the company arrives. Nobody has a voucher open there.
[[nodiscard]] Celdas trasladada(const TablaMovida& tabla, Celdas fila, const Codigos& codigos);
/// Whether both hold the same rows, in whatever order; one engine writes 1.5 where the other writes 1.50.
[[nodiscard]] bool mismas_filas(std::vector<Celdas> unas, std::vector<Celdas> otras);

} // namespace quorvel::dbtools
