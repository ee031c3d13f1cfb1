#pragma once
#include "registro/cotejo.h"

namespace quorvel::registro {

struct Montos {
    std::int64_t cantidad = 0, neto = 0, exento = 0, iva = 0, otro = 0;
    friend bool operator==(const Montos&, const Montos&) = default;
};
/// One document kind of a month on both sides; amounts as the books hold them, positive in credit notes.
struct LineaPrueba {
    int libro = 0;
    std::string clase; ///< kind of the books, or the register's own where the books have none
    Montos registro, libros;
    [[nodiscard]] bool cuadra() const { return registro == libros; }
    [[nodiscard]] Montos diferencia() const; ///< register less books
};
/// Register against books, in the order of the kinds. Only what is registered counts on the one side, only
/// the month's vouchers of the books that were read whole on the other.
[[nodiscard]] std::vector<LineaPrueba> probar_mes(const std::vector<Fila>& filas, const Libros& libros,
                                                  const std::vector<int>& completos);
/// Whether the row is one of those for which its kind's line does not come out even.
[[nodiscard]] bool causa_diferencia(const Fila& f, const LineaPrueba& linea, Mes mes);

} // namespace quorvel::registro
