#pragma once
#include "screen/comandos/con_avance.h"

namespace quorvel {

class frmQuorvel;

/// Lets the person decide when vouchers of the year do not balance. @return go on, neither cancelled nor no
[[nodiscard]] bool aceptar_descuadrados(frmQuorvel& f, int anio);
/// Runs a generating rule under a progress box. @return nothing after a refusal or when cancelled, both of
/// which have been shown
[[nodiscard]] std::optional<AsientoGenerado>
generar_con_avance(frmQuorvel& f, const std::function<ResultadoAsiento(const Avance&)>& regla);
/// New voucher of the second document kind with this date and gloss; number and correlative are those of the
/// date.
void nuevo_asiento(frmQuorvel& f, Fecha fecha, const std::string& glosa);
/// Adds the lines behind those of the grid and shows both totals.
void agregar_lineas(frmQuorvel& f, const AsientoGenerado& a);

} // namespace quorvel
