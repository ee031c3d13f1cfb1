#pragma once
#include "voucher/comprobante.h"
#include "voucher/configuracion.h"
#include "voucher/rechazo.h"

#include <span>

namespace quorvel {

/// What the checks look at. The RUT check rewrites its box and runs before, on the screen.
struct EntradaValidacion {
    const Comprobante& c;
    const Configuracion& k;
    Maestros& maestros;
    clsConexion& db;
    Fecha hoy;
    bool nuevo = false;
    bool editando = false;        ///< a cell edit is open or a row is being added
    std::string fecha_comp_texto; ///< as typed, for messages
};
/// Steps 2 to 17 in their fixed order; nothing when the voucher may be saved. @throws ErrorSesion
[[nodiscard]] std::optional<Rechazo> ValidarComprobante(const EntradaValidacion& e);
[[nodiscard]] std::optional<Rechazo> ValidarLibro(const EntradaValidacion& e);
/// The checks against period, open year and closing voucher alone (steps 4, 5, 7 and 8). @throws ErrorSesion
[[nodiscard]] std::optional<Rechazo> rechazo_periodo(const Comprobante& c, const Configuracion& k,
                                                     clsConexion& db, Fecha hoy);
/// The detail line checks, then the exact sums.
[[nodiscard]] std::optional<Rechazo> ValidarLineas(const std::vector<Linea>& lineas, Recordset& cuentas);
/// The year's closing voucher is recorded and still exists.
[[nodiscard]] bool cierre_vigente(clsConexion& db, int empresa, const Configuracion& k);
/// The voucher has the identity that the configuration records for the closing voucher.
[[nodiscard]] bool es_comprobante_cierre(const Comprobante& c, const Configuracion& k);

} // namespace quorvel
