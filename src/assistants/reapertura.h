#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"

#include <optional>
#include <string>

namespace quorvel {

/// What the screen holds when an assistant is opened again on a document.
struct DocumentoAnterior {
    Decimal neto, exento, total_debe;
    std::string tasa;           ///< as shown
    std::optional<Clave> clave; ///< voucher whose other-tax line may be stored
    std::string cuenta_otros;
    /// Amount of the other-tax line on the screen, while the rate is the one with which it was made.
    std::optional<double> otro_en_lineas;
};
/// Texts that the dialog proposes.
struct Propuesta {
    std::string neto, exento, iva, total, otro;
};
/// Splits a document's total again. The other tax is that of its line, so that an amount typed without or
/// against its rate comes back; it takes away where the total is smaller than net, VAT and exempt amount.
/// @return nothing when it has neither net nor exempt amount. @throws ErrorSesion
[[nodiscard]] std::optional<Propuesta> proponer_reapertura(clsConexion& db, const DocumentoAnterior& d);

} // namespace quorvel
