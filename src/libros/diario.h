#pragma once
#include "libros/libros.h"

#include <functional>
#include <vector>

namespace quorvel::libros {

/// A line of the journal with its voucher's header. An annulled voucher keeps its place without lines.
struct RenglonDiario {
    Posicion donde;
    std::string n_documento, concepto, libro, estado; ///< of the voucher
    std::string centro, n_centro, auxiliar, glosa, num_ref;
    std::int64_t debe = 0, haber = 0;
};
struct TotalesDiario {
    std::int64_t comprobantes = 0, debe = 0, haber = 0; ///< annulled vouchers do not count
};

/// The next rows of the journal (libro diario); fewer than asked for when it ends.
/// @param despues the place of the last row read before @throws ErrorSesion
[[nodiscard]] std::vector<RenglonDiario> leer_diario(clsConexion& db, const PedidoLibro& p,
                                                     const std::optional<Posicion>& despues = {},
                                                     int filas = FILAS_POR_PAGINA);
/// Every row, page by page. @return false when the function ended it by false @throws ErrorSesion
bool recorrer_diario(clsConexion& db, const PedidoLibro& p,
                     const std::function<bool(const RenglonDiario&)>& renglon);
/// @throws ErrorSesion
[[nodiscard]] TotalesDiario totales_diario(clsConexion& db, const PedidoLibro& p);

/// First line of the journal's CSV and one line for a row, without line end.
[[nodiscard]] std::string titulos_diario_csv();
[[nodiscard]] std::string diario_csv(const RenglonDiario& r);

} // namespace quorvel::libros
