#include "text/meses.h"

#include "text/letras_utf8.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <regex>

namespace quorvel {

namespace {

constexpr std::array<const char*, 12> MESES{"enero",      "febrero", "marzo",     "abril",
                                            "mayo",       "junio",   "julio",     "agosto",
                                            "septiembre", "octubre", "noviembre", "diciembre"};
constexpr std::size_t DICIEMBRE = 11;

std::string como(const std::string& modelo, const std::string& nombre) {
    const bool primera = std::isupper(static_cast<unsigned char>(modelo[0])) != 0;
    if (primera && std::isupper(static_cast<unsigned char>(modelo[1])) != 0) return mayusculas(nombre);
    return primera ? mayusculas(nombre.substr(0, 1)) + nombre.substr(1) : nombre;
}

/// "noviembre 2026" in its parts: the name, what stands before the year, the year.
std::string nombrado(const std::smatch& m) {
    const std::string nombre = minusculas(m[1].str());
    const auto mes = static_cast<std::size_t>(std::ranges::find(MESES, nombre) - MESES.begin());
    const std::string siguiente = como(m[1], MESES[(mes + 1) % MESES.size()]);
    if (!m[3].matched) return siguiente;
    return siguiente + m[2].str() + std::to_string(std::stoi(m[3]) + (mes == DICIEMBRE ? 1 : 0));
}

std::string numerado(const std::smatch& m) {
    const int mes = std::stoi(m[1]), anio = std::stoi(m[3]);
    if (mes < 1 || mes > 12) return m[0];
    std::array<char, 16> texto{};
    std::snprintf(texto.data(), texto.size(), m[1].length() == 2 ? "%02d" : "%d", mes % 12 + 1);
    return texto.data() + m[2].str() + std::to_string(anio + mes / 12);
}

template <class Cambio>
std::string reemplazar_cada(const std::string& texto, const std::regex& patron, Cambio cambio) {
    std::string nuevo;
    auto desde = texto.begin();
    for (std::sregex_iterator i(texto.begin(), texto.end(), patron), fin; i != fin; ++i) {
        nuevo.append(desde, texto.begin() + i->position());
        nuevo += cambio(*i);
        desde = texto.begin() + i->position() + i->length();
    }
    return nuevo.append(desde, texto.end());
}

} // namespace

Fecha mes_siguiente(Fecha f) {
    using namespace std::chrono;
    const auto siguiente = year_month(f.year(), f.month()) + months(1);
    const Fecha ultimo = siguiente / last;
    const bool fin_de_mes = f == Fecha(f.year() / f.month() / last);
    return fin_de_mes || f.day() > ultimo.day() ? ultimo : Fecha(siguiente / f.day());
}

std::string con_meses_siguientes(std::string_view texto) {
    static const std::regex NOMBRE(
        R"(\b(enero|febrero|marzo|abril|mayo|junio|julio|agosto|septiembre|octubre|)"
        R"(noviembre|diciembre)\b(?:( (?:de |del )?)(\d{4})\b)?)",
        std::regex::icase);
    static const std::regex MES(R"(\b(\d{1,2})([/-])(20\d\d)\b)");
    const std::string nombres = reemplazar_cada(std::string(texto), NOMBRE, nombrado);
    return reemplazar_cada(nombres, MES, [&](const std::smatch& m) {
        // a whole date is the document's own
        const std::string delante = m.prefix();
        return delante.ends_with('/') || delante.ends_with('-') ? m[0].str() : numerado(m);
    });
}

} // namespace quorvel
