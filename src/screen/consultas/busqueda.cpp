#include "screen/consultas/busqueda.h"

#include "text/letras_utf8.h"

#include <sstream>

namespace quorvel {

namespace {

bool solo(const std::string& texto, const char* letras) {
    return texto.find_first_not_of(letras) == std::string::npos;
}

/// "10/2026" or "10-2026": the first day of that month.
std::optional<Fecha> mes_escrito(const std::string& palabra) {
    const std::size_t corte = palabra.find_first_of("/-");
    if (corte == std::string::npos || palabra.size() - corte != 5) return std::nullopt;
    return leer_fecha("1/" + palabra.substr(0, corte) + "/" + palabra.substr(corte + 1));
}

/// The ways in which the list may show what was typed.
std::vector<std::string> escrituras(const std::string& palabra, Fecha hoy) {
    const std::string folded = sin_acentos(palabra.starts_with('$') ? palabra.substr(1) : palabra);
    std::vector<std::string> formas{folded};
    const std::string sin_puntos = reemplazar(folded, ".", "");
    if (sin_puntos != folded && solo(folded, "0123456789.,")) formas.push_back(sin_puntos);
    if (!solo(sin_puntos, "0123456789k") || sin_puntos.size() < 4) return formas;
    if (const auto fecha = leer_fecha_corta(sin_puntos, anio(hoy))) formas.push_back(fecha_dmy(*fecha));
    if (sin_puntos.size() >= 8) formas.push_back(std::string(sin_puntos).insert(sin_puntos.size() - 1, "-"));
    return formas;
}

} // namespace

Busqueda leer_busqueda(const std::string& texto, Fecha hoy) {
    Busqueda b;
    std::istringstream palabras(texto);
    for (std::string palabra; palabras >> palabra;) {
        const bool separada = palabra.find_first_of("/-") != std::string::npos;
        if (const auto mes = mes_escrito(palabra)) {
            b.desde = mes;
            b.hasta = mes->year() / mes->month() / std::chrono::last;
        } else if (const auto dia = separada ? leer_fecha_corta(palabra, anio(hoy)) : std::nullopt) {
            b.desde = b.hasta = dia;
        } else {
            b.palabras.push_back(escrituras(palabra, hoy));
        }
    }
    return b;
}

} // namespace quorvel
