#pragma once
#include <string>
#include <string_view>

namespace quorvel::registro {

/// A document kind of the tax authority and the kind of the books that it becomes.
struct Clase {
    int codigo;
    const char* nombre;
    const char *compra, *venta; ///< kind of the books, nullptr: that book has none
};
/// @return nullptr for a code that is not known
[[nodiscard]] const Clase* clase_de(std::string_view tipo);
/// Kind of the books, empty when the document cannot be booked in that book. @param libro COMPRAS or VENTAS
[[nodiscard]] std::string doc_libro_de(std::string_view tipo, int libro);
/// Why a document of this kind cannot be booked; empty when it can.
[[nodiscard]] std::string motivo_sin_clase(std::string_view tipo, int libro);
/// Name of the kind for people, with its code.
[[nodiscard]] std::string nombre_clase(std::string_view tipo);
/// VAT that the buyer keeps back: it lessens what is paid. Codes of the tax authority's list of other taxes.
[[nodiscard]] bool es_retencion(std::string_view codigo_otro_impuesto);

} // namespace quorvel::registro
