#pragma once
#include "platform/db/clsConexion.h"
#include "registro/documento.h"
#include "voucher/comprobante.h"
#include "voucher/configuracion.h"

namespace quorvel::registro {

/// A tax document as a voucher holds it. Amounts are positive, in credit notes too.
struct EnLibros {
    Clave clave;
    int libro = 0;
    std::string doc_libro, rut, folio, nombre;
    std::optional<Fecha> fecha;
    std::int64_t neto = 0, exento = 0;
    std::int64_t iva = 0, otro = 0, total = 0; ///< of the lines on the configured accounts
    bool deducido = false; ///< the header gives no amounts: the net is what the lines leave over
};
/// "002-45 del 20/03/2024"
[[nodiscard]] std::string texto(const Clave& clave);

/// A document to look for.
struct Buscado {
    int libro = 0;
    std::string rut, folio;
};
/// What identifies a document: book, kind, RUT and folio.
[[nodiscard]] std::string identidad(int libro, const std::string& doc_libro, const std::string& rut,
                                    const std::string& folio);

/// Valid vouchers of the book and month that refer to a document. @throws ErrorSesion
[[nodiscard]] std::vector<EnLibros> documentos_del_mes(clsConexion& db, int empresa, const Configuracion& k,
                                                       int libro, Mes mes);
/// Valid vouchers of any year with one of these RUTs and folios, however they are written; some of them may
/// be of another kind than the one looked for. One statement for many documents. @throws ErrorSesion
[[nodiscard]] std::vector<EnLibros> documentos_buscados(clsConexion& db, int empresa, const Configuracion& k,
                                                        std::vector<Buscado> buscados);

/// The voucher that an attachment set belongs to; nothing when it was never saved. @throws ErrorSesion
[[nodiscard]] std::optional<Clave> comprobante_del_conjunto(clsConexion& db, const std::string& conjunto);

/// Forms in which a RUT may stand in the database, as texts for a statement: 'a','b'.
[[nodiscard]] std::string formas_de_rut(const std::string& rut);

} // namespace quorvel::registro
