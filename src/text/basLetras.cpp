#include "text/basLetras.h"

#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>

namespace quorvel {

namespace {

constexpr std::array<std::string_view, 10> UNIDADES{"",      "una",  "dos",   "tres", "cuatro",
                                                    "cinco", "seis", "siete", "ocho", "nueve"};
constexpr std::array<std::string_view, 10> DECENAS{"",          "diez",    "veinte",  "treinta", "cuarenta",
                                                   "cincuenta", "sesenta", "setenta", "ochenta", "noventa"};
constexpr std::array<std::string_view, 11> CENTENAS{
    "",           "ciento",      "doscientos",  "trescientos", "cuatrocientos",
    "quinientos", "seiscientos", "setecientos", "ochocientos", "novecientos",
    "cien"};
constexpr std::array<std::string_view, 10> PREFIJOS{
    "",           "dieci",      "veinti",     "treinta y ", "cuarenta y ", "cincuenta y ",
    "sesenta y ", "setenta y ", "ochenta y ", "noventa y "};
constexpr std::array<std::string_view, 5> ONCE_A_QUINCE{"once", "doce", "trece", "catorce", "quince"};
constexpr std::int64_t LIMITE = 1'000'000'000'000;

struct Entero {
    bool negativo = false;
    std::int64_t valor = 0;
};

bool es_digito(char c) { return c >= '0' && c <= '9'; }

Entero leer_entero(std::string_view texto) {
    std::string s = reemplazar(texto, " ", "");
    Entero e;
    const bool vacio = s.empty();
    if (s[0] == '-' || s[0] == '+') {
        e.negativo = s[0] == '-';
        s.erase(0, 1);
    }
    const auto invalido = [&] {
        return std::invalid_argument("\"" + std::string(texto) + "\" no es un número");
    };
    std::string enteros = s.substr(0, s.find(','));
    std::string decimales = enteros.size() < s.size() ? s.substr(enteros.size() + 1) : std::string();
    if (bien_agrupado(enteros)) {
        std::erase(enteros, '.');
    } else { // not where thousands are: it can only be a decimal mark
        if (!decimales.empty()) throw invalido();
        const auto punto = enteros.find('.');
        decimales = enteros.substr(punto + 1);
        enteros.erase(punto);
    }
    if (!std::all_of(enteros.begin(), enteros.end(), es_digito) ||
        !std::all_of(decimales.begin(), decimales.end(), es_digito) ||
        (enteros.empty() && decimales.empty() && !vacio))
        throw invalido();
    for (const char c : enteros) {
        e.valor = e.valor * 10 + (c - '0');
        if (e.valor >= LIMITE)
            throw std::out_of_range("El monto es demasiado grande para escribirlo en letras");
    }
    return e;
}

/// Words of one group of three digits.
std::string grupo_en_letras(std::int64_t g) {
    const auto c = static_cast<std::size_t>(g / 100), t = static_cast<std::size_t>(g % 100), d = t / 10,
               u = t % 10;
    std::string w(g == 100 ? CENTENAS[10] : CENTENAS[c]);
    w += ' ';
    if (t >= 11 && t <= 15)
        w += ONCE_A_QUINCE[t - 11];
    else if (u != 0)
        w.append(PREFIJOS[d]).append(UNIDADES[u]);
    else
        w += DECENAS[d];
    return w + " ";
}

std::string sin_blancos_dobles(const std::string& s) {
    std::string r;
    for (const char c : s)
        if (c != ' ' || (!r.empty() && r.back() != ' ')) r += c;
    return recortar_fin(r);
}

} // namespace

std::string NumeroALetras(std::string_view strnumero) {
    const Entero e = leer_entero(strnumero);
    if (e.valor == 0) return "cero";
    std::array<std::int64_t, 5> grupos{}; // the fifth is always 0
    std::size_t n = 0;
    for (std::int64_t resto = e.valor; resto > 0; resto /= 1000) grupos[n++] = resto % 1000;
    std::string w;
    for (std::size_t i = 0; i < n; ++i) {
        w.insert(0, grupo_en_letras(grupos[i]));
        if (i % 2 == 0 && grupos[i + 1] != 0) w.insert(0, " mil ");
        if (i == 1 && e.valor > 999'999) w.insert(0, e.valor > 1'999'999 ? " millones " : "un millón ");
    }
    w = sin_blancos_dobles(w);
    for (const std::string_view inicio : {"una un", "una mil"})
        if (w.starts_with(inicio)) w.erase(0, 4);
    return e.negativo ? "menos " + w : w;
}

std::string Letras(std::string_view strnumero, int largo_total, const std::optional<std::string>& moneda,
                   const std::optional<std::string>& fraccion) {
    const std::string unidad = moneda ? " " + recortar(*moneda) + " " : " ";
    const std::string centesimos = fraccion ? recortar(*fraccion) : "";
    const std::string s = reemplazar(strnumero, " ", "");
    const auto coma = s.find(',');
    std::string decimales = coma == std::string::npos ? "" : s.substr(coma + 1);
    decimales.resize(2, '0');
    std::string enteros = s.substr(0, coma);
    if (coma != std::string::npos)
        std::erase(enteros, '.'); // the comma is the mark, so points can only group
    std::string r = NumeroALetras(enteros) + unidad;
    if (decimales != "00") r += "con " + NumeroALetras(decimales) + centesimos;
    r = recortar_fin(r);
    if (largo_total <= 0) return r;
    const auto ancho = static_cast<std::size_t>(largo_total);
    r = primeros(r, ancho);
    return r + std::string(ancho - largo(r), ' ');
}

} // namespace quorvel
