#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"
#include "voucher/desenlace.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvel {

/// What reopening the year that was closed last would take away, and what it would leave.
struct Reapertura {
    int anio = 0;                 ///< that would be open again, 0: no year is closed
    std::optional<Clave> cierre;  ///< its closing voucher
    std::vector<Clave> aperturas; ///< of the year after it
    std::int64_t otros = 0;       ///< further vouchers of that year: with them its openings stay as well
    [[nodiscard]] bool quita_aperturas() const { return otros == 0; }
};
/// @throws ErrorSesion
[[nodiscard]] Reapertura leer_reapertura(clsConexion& db, int empresa);
/// What has to be made again afterwards, a line each.
[[nodiscard]] std::string por_rehacer(const Reapertura& r);

/// Undoes the close of the last year in one transaction: its closing voucher, the row of the year after it
/// and, where that year holds nothing else, its openings go; numbers go on from the last of the year that is
/// open again.
[[nodiscard]] Desenlace reabrir_anio(clsConexion& db, int empresa, int usuario, Fecha hoy);

} // namespace quorvel
