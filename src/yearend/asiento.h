#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"
#include "voucher/rechazo.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvel {

/// Hears how many rows were read. @return false cancels
using Avance = std::function<bool(long filas)>;

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
/// One of: the lines, a refusal, or cancelled by the person.
struct ResultadoAsiento {
    std::optional<Rechazo> rechazo;
    bool cancelado = false;
    AsientoGenerado asiento;
};

/// Whether the company has lines dated in the year. @throws ErrorSesion
[[nodiscard]] bool tiene_movimientos(clsConexion& db, int empresa, int anio);

} // namespace quorvel
