#pragma once
#include "historia/proteccion.h"

#include <functional>

namespace quorvel {

/// Begins a company's history with what stands in its vouchers, inside the caller's transaction; one that has
/// begun gets a version of each voucher that changed or went behind its back. @param avance told how many
/// of how many vouchers @return how many versions were written
/// @throws ErrorSesion when a statement is refused
long comenzar_historia(clsConexion& db, int empresa, int usuario,
                       const std::function<void(long hechos, long total)>& avance = {});
/// Switches a company's protections, in one transaction that the history tells of.
/// @throws ErrorSesion, also where the database has no tables for it
void proteger(clsConexion& db, int empresa, int usuario, bool historia, bool cierre,
              const std::function<void(long hechos, long total)>& avance = {});
/// Locks a month against every change of its vouchers, or lets it be changed again. @throws ErrorSesion
void bloquear_mes(clsConexion& db, int empresa, int usuario, int anio, int mes, bool bloqueado);

} // namespace quorvel
