#pragma once
#include "platform/db/clsConexion.h"

namespace quorvel {

/// What a company's configuration switches on beyond the checks of the voucher itself. A database without the
/// tables and a company without its row in ctmhistoria have nothing of it.
struct Proteccion {
    bool historia = false; ///< every change adds a version
    bool cierre = false;   ///< closed years and locked months take no change
    std::string meses{};   ///< locked ones, "2024-03 2024-04 "

    [[nodiscard]] bool mes_bloqueado(Fecha f) const;
};
/// @throws ErrorSesion
[[nodiscard]] Proteccion leer_proteccion(clsConexion& db, int empresa);
/// Of a row with its columns. @throws std::out_of_range
[[nodiscard]] Proteccion leer_proteccion(Recordset& fila);
/// "2024-03"
[[nodiscard]] std::string texto_mes(int anio, int mes);

} // namespace quorvel
