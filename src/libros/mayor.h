#pragma once
#include "libros/libros.h"

#include <functional>
#include <vector>

namespace quorvel::libros {

/// An account, or an account and auxiliary, with what it had before the period (from 1 January on) and what
/// moved it in the period.
struct CuentaMayor {
    std::string centro, n_centro, auxiliar, n_auxiliar; ///< without auxiliaries both are empty
    std::int64_t anterior = 0;                          ///< debit less credit before the period
    std::int64_t debe = 0, haber = 0;
    [[nodiscard]] std::int64_t saldo() const { return anterior + debe - haber; }
};
/// One line of the ledger with the balance behind it, debit less credit.
struct Movimiento {
    Posicion donde;
    std::string auxiliar, glosa, num_ref;
    std::int64_t debe = 0, haber = 0, saldo = 0;
};
/// Whose movements: every auxiliary of the account counts unless one is named ("" is the one without).
struct SeleccionMayor {
    std::string centro;
    std::optional<std::string> auxiliar{};
};

/// The accounts of the ledger (libro mayor) in the order of the chart: those with a balance before the period
/// or a movement in it. @throws ErrorSesion
[[nodiscard]] std::vector<CuentaMayor> leer_mayor(clsConexion& db, const PedidoLibro& p);
/// The movements that one of these accounts sums up.
[[nodiscard]] SeleccionMayor movimientos_de(const CuentaMayor& c, const PedidoLibro& p);
/// The next movements; fewer than asked for when they end. @param despues the last movement read before; the
/// first page starts from `anterior` @throws ErrorSesion
[[nodiscard]] std::vector<Movimiento> leer_movimientos(clsConexion& db, const PedidoLibro& p,
                                                       const SeleccionMayor& s, std::int64_t anterior,
                                                       const std::optional<Movimiento>& despues = {},
                                                       int filas = FILAS_POR_PAGINA);
/// Every movement, page by page. @return false when the function ended it by false @throws ErrorSesion
bool recorrer_movimientos(clsConexion& db, const PedidoLibro& p, const SeleccionMayor& s,
                          std::int64_t anterior, const std::function<bool(const Movimiento&)>& fila);

/// First line of the ledger's CSV, the line of the balance before the period, the line of a movement.
[[nodiscard]] std::string titulos_mayor_csv();
[[nodiscard]] std::string mayor_csv(const CuentaMayor& c);
[[nodiscard]] std::string mayor_csv(const CuentaMayor& c, const Movimiento& m);

} // namespace quorvel::libros
