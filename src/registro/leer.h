#pragma once
#include "registro/documento.h"

#include <stdexcept>
#include <string_view>

namespace quorvel::registro {

/// The file is no register that can be read: what() tells the person why.
class ErrorRegistro : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A file of the register of purchases and sales, as the tax authority hands it out.
struct Archivo {
    std::string nombre; ///< without folder
    int libro = 0;      ///< COMPRAS or VENTAS
    Situacion situacion = Situacion::registro;
    Mes mes;                  ///< from its name, otherwise of its latest document
    std::string rut;          ///< whose it is, from its name; empty when that does not tell
    bool mes_completo = true; ///< holds all that is registered of its book and month
    std::vector<Documento> documentos;
};

/// Within these limits no sum of a file overflows.
inline constexpr std::size_t CIFRAS_MONTO = 13, IMPUESTOS_DOCUMENTO = 12, DOCUMENTOS_ARCHIVO = 50000;
inline constexpr std::size_t BYTES_REGISTRO = 64U << 20; ///< a larger file is none of these

/// Reads a file by its column titles; its name only adds month and owner. Every document line becomes a
/// document, whatever is wrong with it; lines that only add a tax go to the document before them with the
/// same kind, RUT and folio.
/// @param nombre file name, a folder in front is dropped @param bytes UTF-8 or Windows-1252
/// @throws ErrorRegistro
[[nodiscard]] Archivo leer_registro(const std::string& nombre, std::string_view bytes);

inline constexpr const char* DEMASIADOS_DOCUMENTOS = "El archivo trae más de 50.000 documentos";

/// A RUT as the screen shows it; as written when it is none.
[[nodiscard]] std::string rut_mostrado(std::string_view rut);
/// A document number without blanks and leading zeros.
[[nodiscard]] std::string folio_limpio(std::string_view folio);

} // namespace quorvel::registro
