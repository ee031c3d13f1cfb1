#pragma once
#include "voucher/comprobante.h"

namespace quorvel {

/// What a save writes beside the voucher's own fields: the totals in whole pesos, the attachment set.
struct ImportesSql {
    std::int64_t t_debe = 0, t_haber = 0, conjunto = 0;
};

/// The gloss of a line as it is stored, cut to its length.
[[nodiscard]] std::string glosa_guardada(const std::string& glosa);
/// A tax rate as it is stored: the comma becomes a point; points that group thousands go.
[[nodiscard]] std::string tasa_guardada(const std::string& pantalla);
/// " where empresa=… and subsistema=… and f_comp=… and documento=… and num_docum=…"
/// @param tabla what stands before each column, "a."
[[nodiscard]] std::string sql_clave(const Clave& clave, const std::string& tabla = {});
/// The same without the subsystem: date, kind and number are unique in a company.
[[nodiscard]] std::string sql_clave_corta(const Clave& clave, const std::string& tabla = {});
/// Header of a new voucher.
[[nodiscard]] std::string sql_cabecera_nueva(const Comprobante& c, const ImportesSql& m, Fecha hoy);
/// Header of a saved voucher.
[[nodiscard]] std::string sql_cabecera_guardada(const Comprobante& c, const ImportesSql& m, Fecha hoy);
/// Last issued number of the document kind.
[[nodiscard]] std::string sql_ultimo_numero(const Clave& clave, Fecha hoy);
/// Closing data of the year.
[[nodiscard]] std::string sql_comprobante_de_cierre(const Clave& clave, int anio);
/// Header of an annulled voucher.
[[nodiscard]] std::string sql_anulada(const Comprobante& c, const ImportesSql& m, Fecha f_ult_modificacion);
[[nodiscard]] std::string sql_cheque(const Clave& clave, const Comprobante::Cheque& cheque);
/// The invoice of a voucher whose key changed follows it.
[[nodiscard]] std::string sql_factura_sigue(const Clave& antes, const Clave& ahora);
[[nodiscard]] std::string sql_borrar_detalle(const Clave& clave);
/// The line's amount as it is written, whole pesos.
[[nodiscard]] inline std::int64_t monto_guardado(const std::optional<Decimal>& monto) {
    return monto ? monto->pesos() : 0;
}
/// @param secuencia from 1
[[nodiscard]] std::string sql_detalle(const Clave& clave, std::size_t secuencia, const Linea& l);
[[nodiscard]] std::string sql_borrar_adjuntos(std::int64_t conjunto);
[[nodiscard]] std::string sql_adjunto(std::int64_t conjunto, std::int64_t correlativo,
                                      const std::string& nombre);

} // namespace quorvel
