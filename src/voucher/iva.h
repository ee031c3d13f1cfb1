#pragma once
#include <cstdint>

namespace quorvel {

/// Standard VAT rate in percent of the net amount. Source: Decreto Ley 825 (Ley sobre Impuesto a las Ventas y
/// Servicios), article 14.
inline constexpr int TASA_IVA = 19;

/// VAT of a net amount, NOT rounded: "#,##0" rounds it when it is shown.
/// @param neto pesos, whole or as typed
[[nodiscard]] constexpr double iva_de(double neto) { return neto * TASA_IVA / 100; }
/// VAT of a whole net amount in whole pesos, half a peso up.
[[nodiscard]] constexpr std::int64_t iva_en_pesos(std::int64_t neto) { return (neto * TASA_IVA + 50) / 100; }
/// A net amount with its VAT, not rounded.
[[nodiscard]] constexpr double con_iva(double neto) { return neto * (100 + TASA_IVA) / 100; }
/// The net amount of one that includes VAT, not rounded.
[[nodiscard]] constexpr double neto_de(double total) { return total * 100 / (100 + TASA_IVA); }

} // namespace quorvel
