#pragma once
#include "libros/balance.h"
#include "libros/exportar.h"
#include "platform/report/layout.h"

#include <filesystem>

namespace quorvel::app {

/// More lines than this make no PDF: nobody reads 5,000 pages. CSV has no limit.
constexpr std::int64_t MAXIMO_LINEAS_PDF = 200000;

/// A book laid out on pages by its definition ("libro_diario.rpt", "libro_mayor.rpt", "libro_balance.rpt").
/// Fonts need a QGuiApplication. @param definiciones folder of the .rpt files
/// @throws std::runtime_error in Spanish, ErrorSesion
[[nodiscard]] report::Layout componer_libro(clsConexion& db, libros::Libro libro,
                                            const libros::PedidoLibro& p,
                                            const std::filesystem::path& definiciones);
/// The same as a PDF file; also the chart of the monthly totals.
void escribir_libro_pdf(clsConexion& db, libros::Libro libro, const libros::PedidoLibro& p,
                        const std::filesystem::path& definiciones, const std::filesystem::path& archivo);
/// "Desde 01/01/2024 hasta 31/12/2024, norma tributaria"
[[nodiscard]] std::string texto_periodo(const libros::PedidoLibro& p);

} // namespace quorvel::app
