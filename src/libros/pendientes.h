#pragma once
#include "libros/libros.h"

#include <array>
#include <vector>

namespace quorvel::libros {

/// Something of a month that is not finished, as far as the database alone can tell.
struct Pendiente {
    enum class Que { descuadrado, sin_terminar, falta_numero } que;
    Posicion donde;      ///< the voucher; of missing numbers the one behind them
    std::string detalle; ///< the difference, the gloss, the numbers
};
struct MesRevisado {
    int comprobantes = 0;
    std::vector<Pendiente> pendientes; ///< in the order of the books
};
/// The months of a calendar year, January first. A number is missing when its kind has a smaller and a
/// greater one in the year; it counts for the month of the greater one. @throws ErrorSesion
[[nodiscard]] std::array<MesRevisado, 12> revisar_meses(clsConexion& db, int empresa, int anio);

} // namespace quorvel::libros
