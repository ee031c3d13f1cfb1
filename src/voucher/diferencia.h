#pragma once
#include "voucher/comprobante.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quorvel {

/// One usual slip that would explain why a voucher does not balance, and the cell that shows it.
struct CausaDiferencia {
    std::size_t linea = 0; ///< 0-based
    bool debe = true;      ///< the cell is the line's debit
    std::string texto;
};

struct Diagnostico {
    std::int64_t diferencia = 0;         ///< debits minus credits, whole pesos
    std::vector<CausaDiferencia> causas; ///< the likeliest first
    /// The whole explanation as people read it: the difference and at most the first four causes.
    [[nodiscard]] std::string texto() const;
};

/// Tries the slips that people make most: a line without its counterpart, an amount on the wrong side, two
/// digits swapped, a zero too many or too few, VAT left out or included, a rounded peso.
[[nodiscard]] Diagnostico explicar(const std::vector<Linea>& lineas);

} // namespace quorvel
