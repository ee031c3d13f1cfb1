#pragma once
#include "registro/en_libros.h"
#include "registro/sumas.h"

namespace quorvel::registro {

enum class Estado : std::uint8_t { nuevo, contabilizado, difiere, repetido, no_contabilizable, falta };
inline constexpr std::size_t ESTADOS_FILA = 6;
/// "nuevo", "contabilizado", "difiere", "repetido", "no contabilizable", "falta en el registro"
[[nodiscard]] const char* texto(Estado e);

/// A document of the register with what the books know of it, or a document of the books that the register
/// lacks.
struct Fila {
    Documento doc;
    Composicion c;
    std::string doc_libro; ///< kind of the books, empty when it has none
    Estado estado = Estado::nuevo;
    std::string detalle;        ///< what differs, why it cannot be booked, where it stands twice
    std::optional<Clave> clave; ///< its voucher
};

/// Whether the voucher screen can be filled with it, for a person to correct.
[[nodiscard]] bool se_puede_llenar(const Fila& f);

/// What the books say in a month.
struct Libros {
    std::vector<EnLibros> del_mes; ///< of the month, every document of the books looked at
    std::vector<EnLibros> otros;   ///< of other months, found by RUT and folio
};
/// Reads what the documents are compared with: the month's vouchers of each book, then those of other months
/// for the documents that the month does not hold. @throws ErrorSesion
[[nodiscard]] Libros leer_libros(clsConexion& db, int empresa, const Configuracion& k,
                                 const std::vector<Documento>& documentos, Mes mes);
/// Compares both sides. A row for each document in the order given, then what the register lacks.
/// @param completos books whose whole month was given: only these can lack a document
[[nodiscard]] std::vector<Fila> cotejar(const std::vector<Documento>& documentos, const Libros& libros,
                                        Mes mes, const std::vector<int>& completos);

} // namespace quorvel::registro
