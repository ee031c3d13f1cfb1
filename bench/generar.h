#pragma once
#include <string>

namespace quorvel::bench {

/// A company 1 with the year 2024 open: 2,000 accounts, 50,000 auxiliaries and N vouchers of four balanced
/// lines dated over the year in the order of their numbers, half of each month's in its last eight days. Few
/// accounts, parties and kinds carry most of the lines, as in a real company. The database must be empty; it
/// comes out with fresh statistics.
/// @throws std::exception naming what was refused
void generar(const std::string& conexion, int comprobantes);

/// The vouchers of generar() by their running number.
struct Generado {
    std::string documento, num_docum, f_comp; ///< date "yyyy-mm-dd"
    std::string rut, num_ref;
};
[[nodiscard]] Generado generado(const std::string& conexion, int numero);

} // namespace quorvel::bench
