#pragma once
#include "yearend/asiento.h"

namespace quorvel {

struct PedidoApertura {
    int empresa = 0;
    int anio = 0;      ///< year to open; the balances are those of the year before
    std::string norma; ///< "1" or "2"; vouchers of norm "0" count for both
    std::string glosa;
    bool por_documento = false; ///< keeps balances apart by referenced document
};
/// One line per balance-sheet account and auxiliary, then the result line. Changes nothing but the session's
/// own work table. @throws ErrorSesion
[[nodiscard]] ResultadoAsiento generar_apertura(clsConexion& db, const PedidoApertura& p,
                                                const Avance& avance = {});

} // namespace quorvel
