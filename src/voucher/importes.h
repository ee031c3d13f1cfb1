#pragma once
#include "voucher/grabar_sql.h"

namespace quorvel {

inline constexpr const char* PASO_DETALLE = "Problemas al grabar detalle";
/// The header's amounts as they are written: both totals summed again from the lines, in whole pesos.
/// @param conjunto attachment set @param paso text of the header's step
/// @throws PasoFallido for a text that is no number, an amount that is too large or sums that differ only
/// once they are whole
[[nodiscard]] ImportesSql importes_sql(const Comprobante& c, std::int64_t conjunto, const char* paso);

} // namespace quorvel
