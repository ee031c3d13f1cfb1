#pragma once
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::oficina {

/// A book's CSV seen as rows and columns. The first line holds the titles; those that name amounts are right
/// aligned and grouped as a table, and numbers in JSON.
class TablaTexto {
public:
    void agregar(std::string_view linea_csv);
    /// Columns side by side, two blanks apart.
    [[nodiscard]] std::string texto() const;
    /// One object a row, named by the titles.
    [[nodiscard]] nlohmann::json json() const;

private:
    using Fila = std::vector<std::string>;
    [[nodiscard]] bool es_monto(std::size_t columna) const;
    [[nodiscard]] std::vector<Fila> vistas() const; ///< as people read them
    std::vector<Fila> filas_;                       ///< titles first
};
/// Cells of one CSV line, quoted ones without their quotes.
[[nodiscard]] std::vector<std::string> celdas_csv(std::string_view linea);

} // namespace quorvel::oficina
