#pragma once
#include "text/fecha.h"
#include "text/numeros.h"
#include "yearend/asiento.h"

namespace quorvel {

struct PedidoCierre {
    int empresa = 0;
    Fecha hasta{}; ///< the closing voucher's date; everything up to it counts
    std::string glosa, centro_gan, centro_per;
    Decimal debe, haber; ///< totals of the lines that a rebuilt closing voucher keeps
};
/// Brings every result account to zero against the profit or the loss account, accounts with the largest
/// credits first. Changes nothing. @throws ErrorSesion
[[nodiscard]] ResultadoAsiento generar_lineas_cierre(clsConexion& db, const PedidoCierre& p,
                                                     const Avance& avance = {});

} // namespace quorvel
