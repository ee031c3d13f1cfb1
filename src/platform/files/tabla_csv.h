#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

struct FilaCsv {
    int linea = 0;
    std::vector<std::string> celdas;
};
/// A table as spreadsheets write it.
struct TablaCsv {
    std::vector<std::string> titulos;   ///< lower case, without accents
    std::vector<FilaCsv> filas;         ///< lines that are not blank
    std::optional<int> byte_ajeno;      ///< line of a byte that is no letter of either code
    std::optional<int> comilla_abierta; ///< line of a quote that is never closed: its cell holds the rest
    [[nodiscard]] std::optional<std::size_t> columna(std::string_view titulo) const;
};
/// The title line decides the separator (";", tab or ","). A quoted cell may hold separators, doubled quotes
/// and line ends. UTF-8 or, when it is none, Windows-1252.
[[nodiscard]] TablaCsv leer_tabla_csv(std::string_view bytes);

} // namespace quorvel
