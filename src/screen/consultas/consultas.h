#pragma once
#include "platform/db/clsConexion.h"
#include "platform/ui/escritorio.h"

#include <optional>
#include <string>

namespace quorvel {

/// What a lookup form returned, without blanks at the ends.
struct Eleccion {
    std::string codigo, nombre;
};
/// A voucher picked in the search form.
struct ComprobanteElegido {
    std::string f_comp; ///< "mm/dd/yyyy"
    std::string documento, num_docum;
    std::string subsistema; ///< the picked row's, empty when unknown
};

// Each shows its lookup form modally. @return nothing when cancelled
[[nodiscard]] std::optional<Eleccion> elegir_cuenta_contable(ui::Escritorio& escritorio, clsConexion& db);
[[nodiscard]] std::optional<Eleccion> elegir_centro_costo(ui::Escritorio& escritorio, clsConexion& db);
[[nodiscard]] std::optional<Eleccion> elegir_auxiliar(ui::Escritorio& escritorio, clsConexion& db);
[[nodiscard]] std::optional<Eleccion> elegir_impuesto(ui::Escritorio& escritorio, clsConexion& db);
/// Counterparts that vouchers have used: RUT and name.
[[nodiscard]] std::optional<Eleccion> elegir_persona(ui::Escritorio& escritorio, clsConexion& db);
/// Bank accounts that cheques have used: bank and account.
[[nodiscard]] std::optional<Eleccion> elegir_cuenta(ui::Escritorio& escritorio, clsConexion& db);
/// @param glbSQL the vouchers that may be seen
[[nodiscard]] std::optional<ComprobanteElegido>
elegir_comprobante(ui::Escritorio& escritorio, clsConexion& db, const std::string& glbSQL);

} // namespace quorvel
