#pragma once
#include <array>
#include <string>
#include <string_view>

namespace quorvel {

/// Retention percentages in the order offered; the first is preselected.
inline constexpr std::array<std::string_view, 11> PORCENTAJES_RETENCION{
    "16,75", "16", "15,25", "14,50", "13,75", "13", "12,25", "11,50", "10,75", "10", "0"};

/// The assistant's amount fields as displayed. Each reaction takes them as they are and returns them as they
/// are shown next; amounts come out grouped and rounded to whole pesos, halves away from zero.
struct Importes {
    int libro = 0;         ///< mode: the book's position
    std::string documento; ///< kind chosen in the dialog
    std::string neto, exento, otro, total, iva;
    std::string tasa;       ///< other-tax rate in percent, decimal comma
    std::string porcentaje; ///< retention percentage
};

/// Number of a retention percentage: "." removed, "," is the decimal mark; 0 when there is none.
[[nodiscard]] double LeerNumero(std::string_view texto);
/// Whether a typed amount is one number: digits, "." only where thousands are grouped, "," before decimals; a
/// sign may stand in front. An empty text is no amount yet, which is none to refuse.
[[nodiscard]] bool monto_escrito(std::string_view texto);
/// Whether a typed rate is empty or a number without a sign; "." or "," is its decimal mark.
[[nodiscard]] bool tasa_escrita(std::string_view texto);
/// An amount as the dialog shows it.
[[nodiscard]] std::string mostrar_monto(double valor);

[[nodiscard]] Importes neto_cambiado(Importes i);
[[nodiscard]] Importes exento_cambiado(Importes i);
[[nodiscard]] Importes otro_cambiado(Importes i);
/// The other tax follows its rate in every mode, then the total.
[[nodiscard]] Importes tasa_cambiada(Importes i);
[[nodiscard]] Importes total_cambiado(Importes i);
[[nodiscard]] Importes porcentaje_elegido(Importes i);
/// Net and VAT out of the total. The net is whole, so the total may move by one peso.
[[nodiscard]] Importes calcular_iva(Importes i);
/// Tells whether the parts add up to the total: "Cuadra", or by how much they miss it; empty without amounts.
[[nodiscard]] std::string texto_cuadre(const Importes& i);

} // namespace quorvel
