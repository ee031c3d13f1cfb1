#include "text/suma.h"

namespace quorvel {
namespace {

constexpr bool es_digito(char c) { return c >= '0' && c <= '9'; }

std::optional<Decimal> leer_termino(std::string_view termino) {
    if (termino.empty() || !es_digito(termino.front()) || !es_digito(termino.back()) || !monto_sql(termino))
        return std::nullopt;
    return Decimal::leer(termino);
}

} // namespace

std::optional<Decimal> sumar(std::string_view texto) {
    if (texto.ends_with('+') || texto.ends_with('-')) texto.remove_suffix(1);
    Decimal suma;
    bool resta = texto.starts_with('-');
    if (resta) texto.remove_prefix(1);
    for (;;) {
        const std::size_t fin = texto.find_first_of("+-");
        const auto termino = leer_termino(texto.substr(0, fin));
        if (!termino) return std::nullopt;
        suma = resta ? suma - *termino : suma + *termino;
        if (fin == std::string_view::npos) break;
        resta = texto[fin] == '-';
        texto.remove_prefix(fin + 1);
    }
    if (!cabe_en_total(suma)) return std::nullopt;
    return suma;
}

std::optional<Decimal> monto_de_linea(std::string_view texto) {
    const auto suma = sumar(texto);
    if (!suma || *suma < Decimal() || *suma != Decimal::leer(suma->formato("0"))) return std::nullopt;
    return suma;
}

} // namespace quorvel
