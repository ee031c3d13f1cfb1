#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"

namespace quorvel {

/// Query that the search form lists: the company's vouchers, only the user's own when alias is 2.
[[nodiscard]] std::string consulta_busqueda(int empresa, int usuario, int alias);
/// Date since which that query lists so many vouchers, the latest ones, and the rest of their first day;
/// nothing when it lists no more than that. @throws ErrorSesion
[[nodiscard]] std::optional<Fecha> fecha_de_los_ultimos(clsConexion& db, const std::string& consulta,
                                                        int cuantos);
/// A stored voucher: its header (no lines) and the fingerprint that tells it from any later state.
struct Guardado {
    Comprobante c;
    std::string huella;
};
/// Header and fingerprint; nothing when it does not exist. @throws ErrorSesion
[[nodiscard]] std::optional<Guardado> leer_guardado(clsConexion& db, const Clave& clave);
/// Header of a voucher (no lines); nothing when it does not exist. @param subsistema "" takes any
[[nodiscard]] std::optional<Comprobante> leer_cabecera(clsConexion& db, int empresa, Fecha f_comp,
                                                       const std::string& documento,
                                                       const std::string& num_docum,
                                                       const std::string& subsistema = {});
/// The same of a row that has been read already.
[[nodiscard]] Comprobante leer_cabecera(Recordset& fila);
/// A line, of a row whose columns from this one on are those of consulta_lineas without the number.
[[nodiscard]] Linea leer_linea(Recordset& fila, std::size_t desde);
/// Query of a voucher's lines in grid-column order, for the grid's RecordSource.
[[nodiscard]] std::string consulta_lineas(const Clave& clave);
/// Query of all that belongs to a voucher beside its header, in order: a row's first column tells a line (1)
/// from an attached file (2), lines follow as in consulta_lineas, a file's name is the third column.
[[nodiscard]] std::string consulta_contenido(const Clave& clave, std::int64_t conjunto);
/// The lines themselves, as the grid shows them. @throws ErrorSesion
[[nodiscard]] std::vector<Linea> leer_lineas(clsConexion& db, const Clave& clave);
/// True when a voucher of that date, kind and number exists; false also when the database refuses to say.
[[nodiscard]] bool ExisteComprobante(clsConexion& db, const Clave& clave);
/// File names of an attachment set, in the order of their correlative; set 0 has none.
[[nodiscard]] std::vector<std::string> leer_adjuntos(clsConexion& db, const std::string& conjunto);
/// Attachment set of a voucher: its own when it has one, otherwise the greatest of all companies plus one.
[[nodiscard]] std::string numero_adjunto(clsConexion& db, const std::optional<Clave>& clave);

/// Counterpart name that an earlier voucher carries for this RUT; empty when none does. @throws ErrorSesion
[[nodiscard]] std::string nombre_de_rut(clsConexion& db, const std::string& rut);

} // namespace quorvel
