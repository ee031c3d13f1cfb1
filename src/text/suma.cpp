#include "text/suma.h"

#include <algorithm>

namespace quorvel {
namespace {

constexpr std::string_view SIGNOS = "+-";

constexpr bool es_digito(char c) { return c >= '0' && c <= '9'; }

/// Points stand only before three digits: "1.5" is no way to write 15.
bool bien_agrupado(std::string_view termino) {
    std::string_view entero = termino.substr(0, termino.find(','));
    if (entero.find('.') == std::string_view::npos) return true;
    for (bool primero = true; !entero.empty(); primero = false) {
        const std::size_t fin = std::min(entero.find('.'), entero.size());
        if (primero ? fin == 0 || fin > 3 : fin != 3) return false;
        entero.remove_prefix(std::min(fin + 1, entero.size()));
    }
    return termino[termino.find_last_of('.') + 1] != '\0';
}

std::optional<Decimal> leer_termino(std::string_view termino) {
    const bool cifras = std::all_of(termino.begin(), termino.end(),
                                    [](char c) { return es_digito(c) || c == '.' || c == ','; });
    if (!cifras || termino.empty() || !es_digito(termino.front()) || !es_digito(termino.back()))
        return std::nullopt;
    if (!bien_agrupado(termino) || !numero_sql(termino)) return std::nullopt;
    return Decimal::leer(termino);
}

} // namespace

std::optional<Decimal> sumar(std::string_view texto) {
    if (!texto.empty() && SIGNOS.find(texto.back()) != std::string_view::npos) texto.remove_suffix(1);
    Decimal suma;
    bool resta = !texto.empty() && texto.front() == '-';
    if (resta) texto.remove_prefix(1);
    for (;;) {
        const std::size_t fin = texto.find_first_of(SIGNOS);
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
