#pragma once
#include "registro/documento.h"

namespace quorvel::registro {

/// What a document's amounts become in the books.
struct Composicion {
    std::int64_t neto = 0, exento = 0;
    std::int64_t iva = 0;   ///< goes to the VAT account
    std::int64_t costo = 0; ///< taxes without credit: they stay with the expense
    std::int64_t otro = 0;  ///< other taxes, less the VAT that the buyer keeps back
    std::int64_t total = 0;
    std::int64_t diferencia = 0; ///< what the total has more than its parts; 0: they add up
    friend bool operator==(const Composicion&, const Composicion&) = default;
};
/// Adds up a document. Amounts that some files count within others and some beside them are taken the way
/// in which the total comes out.
[[nodiscard]] Composicion componer(const Documento& d);
/// An other tax with the sign with which it enters the total.
[[nodiscard]] std::int64_t con_signo(const OtroImpuesto& o);

} // namespace quorvel::registro
