#pragma once
#include "interchange/tablas_impresion.h"
#include "voucher/comprobante.h"
#include "voucher/desenlace.h"

#include <optional>

namespace quorvel {

using Cheque = Comprobante::Cheque;

/// The cheque of a voucher; nothing when it has none (or there is no such voucher). @throws ErrorSesion
[[nodiscard]] std::optional<Cheque> leer_cheque(clsConexion& db, const Clave& clave);
/// One more than the highest cheque number of the bank account; nothing when it has no cheques.
[[nodiscard]] std::optional<std::int64_t> proximo_cheque(clsConexion& db, const std::string& banco,
                                                         const std::string& cuenta);
/// Writes the cheque into the voucher's header in one transaction. @param usuario who issues it
[[nodiscard]] Desenlace GrabarCheque(clsConexion& db, const Clave& clave, const Cheque& c, int usuario = 0);
/// Fills the cheque's staging table. @throws std::runtime_error, ErrorSesion
void preparar_cheque(clsConexion& reporte, const std::string& empresa, const Cheque& c,
                     const std::string& total);
/// Name of the definition: crossed cheques have their own.
[[nodiscard]] inline std::string informe_cheque(const Cheque& c) {
    return c.cruzado ? "ctccheque1" : "ctccheque";
}

} // namespace quorvel
