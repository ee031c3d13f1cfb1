#pragma once
#include "voucher/signo_documento.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace quorvel {

// Books and tax-document kinds. Both are stored as these texts, so every blank and point counts.

/// Position in TEXTOS_LIBRO; the assistants use it as their mode.
enum Libro : std::int16_t { CONTABLES, VENTAS, COMPRAS, RETENCIONES, INGRESOS, EGRESOS, RET_SOCIO };

inline constexpr std::array<std::string_view, 7> TEXTOS_LIBRO{
    "CONTABLES", "VENTAS", "COMPRAS", "RETENCIONES", "INGRESOS", "EGRESOS", "RET. SOCIO"};

inline constexpr std::string_view SIN_DOCUMENTO = " "; ///< no kind chosen

inline constexpr std::array<std::string_view, 27> DOCUMENTOS_LIBRO{
    SIN_DOCUMENTO,      "BOLETA",           "FACTURA",        "FACTURA EXENTA",   "F. ELECTRONICA",
    "F. EXENTA ELECT.", "F. IMPORTACION",   "NOTA CREDITO",   "N.C. ELECTRONICA", "NOTA DEBITO",
    "N.D. ELECTRONICA", "DECLARACION IMP.", "B. ELECTRONICA", "B. EXENTA",        "B. EXENTA ELECT.",
    "FACTURA COMPRA",   "F. COMPRA ELECT.", "FACTURA EXP.",   "F EXP. ELECT.",    "N.C. EXP. ELECT.",
    "N.D. EXP. ELECT.", "F. VENTA. Z.F.",   "F. TRASP. Z.F.", "VALES TRANSBANK",  "SRF SOL. REG.",
    "EGRESO",           "INGRESO"};

/// Kinds that an assistant offers, in its own order; the partner withdrawal too.
[[nodiscard]] std::span<const std::string_view> documentos_ofrecidos(int libro);

/// No purchase VAT; the supplier line goes to the receipts account.
[[nodiscard]] bool es_boleta_compra(std::string_view documento);
/// The customer line goes to the receipts account.
[[nodiscard]] bool es_boleta_venta(std::string_view documento);

} // namespace quorvel
