#pragma once
#include "libros/libros.h"
#include "platform/db/avance.h"

#include <iosfwd>
#include <string_view>

namespace quorvel::libros {

enum class Libro { diario, mayor, balance, mensual };
[[nodiscard]] const char* titulo_libro(Libro libro);
/// What is wrong with a request for this book.
[[nodiscard]] std::optional<Rechazo> revisar_pedido(const PedidoLibro& p, Libro libro);

/// Writes a book as CSV (UTF-8, cells separated by ";"), page by page; monthly totals are those of the year
/// in which the period begins. @return false when it was stopped @throws ErrorSesion
bool escribir_libro_csv(clsConexion& db, Libro libro, const PedidoLibro& p, std::ostream& salida,
                        const Avance& avance = {});

} // namespace quorvel::libros
