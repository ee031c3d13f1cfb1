#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/rechazo.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quorvel::libros {

/// Which vouchers a book reads. Books read only; every sum is the engine's own. Amounts are whole pesos.
struct PedidoLibro {
    int empresa = 0;
    Fecha desde{}, hasta{};    ///< both days included
    std::string norma{};       ///< "1" or "2": vouchers of that norm and of both; "" or "0": all vouchers
    bool sin_cierre = false;   ///< leaves out the annual closing vouchers that the configuration records
    std::string cuenta{};      ///< ledger: this account alone; "" all of them
    bool por_auxiliar = false; ///< ledger: keeps the auxiliaries of an account apart
    friend bool operator==(const PedidoLibro&, const PedidoLibro&) = default;
};

/// What is wrong with a request; nothing when it can be answered. Balances start with the year (the opening
/// voucher brings what was before), so ledger and balance need a period within one year.
[[nodiscard]] std::optional<Rechazo> revisar_pedido(const PedidoLibro& p, bool en_un_anio);

/// Place of a line in the order of the books: date, document kind, number as a number, line. A page goes on
/// behind the place of the last row that was read.
struct Posicion {
    Fecha f_comp{};
    std::string documento, num_docum;
    int secuencia = 0; ///< 0: a voucher without lines
};

constexpr int FILAS_POR_PAGINA = 500;

/// A CSV cell: quoted when it holds the separator ";", a quote or a line end.
[[nodiscard]] std::string celda_csv(std::string_view texto);

// Pieces of the books' statements; `a` is the name of the lines' table, `c` of the headers'.

/// " a.empresa=… and a.f_comp between … and …" without the closing vouchers when so wanted.
[[nodiscard]] std::string condicion_lineas(clsConexion& db, const PedidoLibro& p, Fecha desde);
/// What joins the headers to the lines and keeps those of the norm; both empty when every norm counts.
struct FiltroNorma {
    std::string tabla, condicion;
};
[[nodiscard]] FiltroNorma filtro_norma(const PedidoLibro& p);
/// " and …" for what stands behind a place; columns of the table named `t`, the line's number as given.
[[nodiscard]] std::string condicion_despues(const Posicion& d, const std::string& t,
                                            const std::string& secuencia);
/// " order by …" of the same columns.
[[nodiscard]] std::string orden_libro(const std::string& t, const std::string& secuencia);

} // namespace quorvel::libros
