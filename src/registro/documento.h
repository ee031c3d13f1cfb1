#pragma once
#include "text/fecha.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvel::registro {

/// In which state the tax authority holds a purchase; a sale is always registered. Only what is registered
/// counts for the month's tax.
enum class Situacion : std::uint8_t { registro, pendiente, no_incluir, reclamado };
/// "registro", "pendiente", "no incluir", "reclamado"
[[nodiscard]] const char* texto(Situacion s);

/// A calendar month; year 0 is none.
struct Mes {
    int anio = 0, mes = 0;
    [[nodiscard]] bool contiene(Fecha f) const { return quorvel::anio(f) == anio && quorvel::mes(f) == mes; }
    /// Months between two dates' months, the sign tells which is later.
    [[nodiscard]] int desde(Fecha f) const { return (anio - quorvel::anio(f)) * 12 + mes - quorvel::mes(f); }
    [[nodiscard]] Fecha primer_dia() const {
        return {std::chrono::year(anio), std::chrono::month(static_cast<unsigned>(mes)), std::chrono::day(1)};
    }
    friend auto operator<=>(const Mes&, const Mes&) = default;
};
/// "10/2024", empty for no month.
[[nodiscard]] std::string texto(Mes m);
/// Reads "10/2024" or "202410". @return no month when it is none
[[nodiscard]] Mes leer_mes(std::string_view texto);

struct OtroImpuesto {
    std::string codigo; ///< the tax authority's, digits
    std::int64_t valor = 0;
    std::string tasa; ///< percent, decimal point, as the file gives it
};

/// One document of the register. Amounts are whole pesos, positive in credit notes too.
struct Documento {
    int libro = 0; ///< COMPRAS or VENTAS
    Situacion situacion = Situacion::registro;
    std::string archivo;
    int linea = 0;
    std::string nro, tipo, rut, nombre, folio; ///< folio without leading zeros, RUT as the screen shows it
    std::optional<Fecha> fecha, recepcion;
    std::int64_t exento = 0, neto = 0, iva = 0, total = 0;
    std::int64_t iva_no_recuperable = 0, neto_activo_fijo = 0, iva_activo_fijo = 0, iva_uso_comun = 0,
                 sin_credito = 0, tabacos_puros = 0, cigarrillos = 0, tabacos_elaborados = 0;
    std::int64_t retenido_total = 0, retenido_parcial = 0;
    std::string codigo_no_recuperable;
    std::string codigo_otro, valor_otro, tasa_otro; ///< of the line itself, as written
    std::vector<OtroImpuesto> otros;
    std::string problema; ///< why the line cannot be read whole; empty when it can
};

} // namespace quorvel::registro
