#pragma once
#include "libros/libros.h"

#include <array>
#include <vector>

namespace quorvel::libros {

/// What a book moved in each month of a year: vouchers that are not annulled, and their debit totals less
/// those of the credit notes.
struct LibroMensual {
    std::string libro;
    std::array<std::int64_t, 12> total{};
    std::array<int, 12> comprobantes{};
};
/// The books that moved, in the order of the books' names. @throws ErrorSesion
[[nodiscard]] std::vector<LibroMensual> leer_totales_mensuales(clsConexion& db, int empresa, int anio);
/// Lines ended by "\n": a title, then book, month, vouchers and total.
[[nodiscard]] std::string totales_mensuales_csv(const std::vector<LibroMensual>& libros);

} // namespace quorvel::libros
