#pragma once
#include "historia/version.h"

namespace quorvel {

/// One cell of a voucher in two of its versions, as a person reads it.
struct CeldaComparada {
    std::string donde; ///< "Glosa", "Línea 3, Debe", "Adjunto"
    std::string antes, ahora;
    [[nodiscard]] bool distinta() const { return antes != ahora; }
};
/// Cells that either version has: header, lines, attached files. Lines that were put in between do not make
/// those behind them differ.
[[nodiscard]] std::vector<CeldaComparada> comparar_versiones(const Version& antes, const Version& ahora);

} // namespace quorvel
