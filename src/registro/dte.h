#pragma once
#include "registro/leer.h"

namespace quorvel::registro {

inline constexpr std::size_t BYTES_DTE = 16U << 20; ///< a larger file is no invoice
inline constexpr const char* DTE_ENORME = "El archivo es demasiado grande para una factura electrónica";

/// Whether a file is XML, whatever it holds.
[[nodiscard]] bool es_xml(std::string_view bytes);
/// Whether a file's outermost element is that of electronic documents: DTE, EnvioDTE or SetDTE.
[[nodiscard]] bool es_documento_electronico(std::string_view bytes);

/// Reads the electronic documents of a file, one (DTE) or many (EnvioDTE). The sums are verified, the
/// signature is not. What the company sold or bought is told by its RUT as issuer or receiver; a document of
/// others has that as its problem.
/// @param bytes UTF-8 or Windows-1252, whatever the file declares @param rut_empresa as the screen shows it
/// @throws ErrorRegistro for everything that is not such a file
[[nodiscard]] Archivo leer_dte(const std::string& nombre, std::string_view bytes,
                               const std::string& rut_empresa);

} // namespace quorvel::registro
