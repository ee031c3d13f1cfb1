#pragma once
#include "platform/db/avance.h"
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"
#include "voucher/desenlace.h"

#include <string>
#include <vector>

namespace quorvel {

/// A generated line with the counter that its first cell shows (rows left out are counted too).
struct LineaNumerada {
    int contador = 0;
    Linea linea;
};
/// Lines that a year-end process proposes, with the totals of the whole voucher.
struct AsientoGenerado {
    std::vector<LineaNumerada> lineas;
    Totales totales;
};
struct ResultadoAsiento {
    Desenlace desenlace;
    AsientoGenerado asiento;
};

/// Whether the company has lines dated in the year. @throws ErrorSesion
[[nodiscard]] bool tiene_movimientos(clsConexion& db, int empresa, int anio);

} // namespace quorvel
