#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/configuracion.h"
#include "voucher/desenlace.h"

namespace quorvel {

inline constexpr const char* FALTA_CIERRE = "Antes de Cerrar el Año de debe Generar el Comprobante de Cierre";

struct ResultadoCerrarAnio {
    Desenlace desenlace;
    std::string mensaje; ///< what was done
    Configuracion nueva; ///< configuration of the year that is open now
};
/// Checks that the result accounts are at zero, opens the next year, restarts the numbering. The statements
/// stand by themselves: what was done before a failure stays. @throws ErrorSesion
/// A company's history tells of the new year in one transaction with it. @param usuario who closes
/// @param sigue asked while the engine checks; false ends it. From the first change on nobody is asked.
[[nodiscard]] ResultadoCerrarAnio cerrar_anio_contable(clsConexion& db, int empresa, Fecha hoy,
                                                       const std::function<bool()>& sigue = {},
                                                       int usuario = 0);
/// Goes on where a close was cut off after it had opened the year. @return nothing when no close is
/// unfinished; once the new year has vouchers, none is
/// @throws ErrorSesion
[[nodiscard]] std::optional<ResultadoCerrarAnio> completar_cierre_anio(clsConexion& db, int empresa,
                                                                       Fecha hoy);

} // namespace quorvel
