#pragma once
#include "voucher/comprobante.h"

namespace quorvel {

/// A voucher's amounts as plain numbers, ready for a statement.
struct ImportesSql {
    std::string t_debe, t_haber, cotizacion, monto_neto, monto_exento, conjunto, correlativo, iva_activo_fijo;
};
/// A displayed amount as whole pesos in plain digits; nothing for a text that is no number.
[[nodiscard]] std::optional<std::string> entero_sql(std::string_view chileno);

/// The gloss of a line as it is stored, cut to its length.
[[nodiscard]] std::string glosa_guardada(const std::string& glosa);
/// A tax rate as it is stored: the comma becomes a point; points that group thousands go.
[[nodiscard]] std::string tasa_guardada(const std::string& pantalla);
/// " where empresa=… and subsistema=… and f_comp=… and documento=… and num_docum=…"
[[nodiscard]] std::string sql_clave(const Clave& clave);
/// Header of a new voucher.
[[nodiscard]] std::string sql_H1(const Comprobante& c, const ImportesSql& m, Fecha hoy);
/// Header of a saved voucher.
[[nodiscard]] std::string sql_H2(const Comprobante& c, const ImportesSql& m, Fecha hoy);
/// Last issued number of the document kind.
[[nodiscard]] std::string sql_N1(const Clave& clave, Fecha hoy);
/// Closing data of the year.
[[nodiscard]] std::string sql_C1(const Clave& clave, int anio);
/// Header of an annulled voucher.
[[nodiscard]] std::string sql_anulada(const Comprobante& c, const ImportesSql& m, Fecha f_ult_modificacion);
[[nodiscard]] std::string sql_cheque(const Clave& clave, const Comprobante::Cheque& cheque);
/// The invoice of a voucher whose key changed follows it.
[[nodiscard]] std::string sql_factura_sigue(const Clave& antes, const Clave& ahora);
[[nodiscard]] std::string sql_borrar_detalle(const Clave& clave);
/// Nothing when an amount is no number. @param secuencia from 1
[[nodiscard]] std::optional<std::string> sql_detalle(const Clave& clave, std::size_t secuencia,
                                                     const Linea& l);
[[nodiscard]] std::string sql_borrar_adjuntos(const std::string& conjunto);
[[nodiscard]] std::string sql_adjunto(const std::string& conjunto, std::int64_t correlativo,
                                      const std::string& nombre);

} // namespace quorvel
