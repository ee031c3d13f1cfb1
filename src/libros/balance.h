#pragma once
#include "libros/libros.h"

#include <vector>

namespace quorvel::libros {

/// One row of the eight-column balance.
struct LineaBalance {
    std::string centro, nombre;
    std::int64_t debitos = 0, creditos = 0, deudor = 0, acreedor = 0, activo = 0, pasivo = 0, perdida = 0,
                 ganancia = 0;
};
/// The balance (balance general de 8 columnas). The result of the period stands among liabilities and losses
/// when it is a profit, among assets and gains when it is a loss, so that each pair of totals agrees.
struct Balance {
    std::vector<LineaBalance> cuentas; ///< accounts that moved, in the order of the chart
    LineaBalance sumas, resultado, totales;
    /// Accounts that the chart does not have; they count as balance-sheet accounts.
    std::vector<std::string> sin_cuenta;
    /// Debits less credits of everything: 0 unless a voucher does not balance.
    [[nodiscard]] std::int64_t descuadre() const { return sumas.debitos - sumas.creditos; }
};

/// @throws ErrorSesion
[[nodiscard]] Balance leer_balance(clsConexion& db, const PedidoLibro& p);
/// Completes a balance whose accounts have their debits and credits. @param de_resultado per account, in
/// order
void armar_balance(Balance& b, const std::vector<bool>& de_resultado);

/// The eight amounts in the order of the columns, and their titles.
[[nodiscard]] std::vector<std::int64_t> columnas_balance(const LineaBalance& l);
[[nodiscard]] const std::vector<std::string>& titulos_balance();
/// The whole table with its last three rows, lines ended by "\n".
[[nodiscard]] std::string balance_csv(const Balance& b);

} // namespace quorvel::libros
