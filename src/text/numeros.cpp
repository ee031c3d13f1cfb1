#include "text/numeros.h"

#include "text/blancos.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace quorvel {
namespace {

constexpr bool es_digito(char c) { return c >= '0' && c <= '9'; }

/// A number as decimal digits, which is where the rounding rules are defined.
struct Cifras {
    bool negativo = false;
    std::string entero;
    std::string decimales;
};

/// The 15 significant digits of a double: the digits a person would say it has.
Cifras cifras_de(double valor) {
    Cifras c;
    c.entero = "0";
    if (!std::isfinite(valor)) return c;
    std::array<char, 40> cientifica{};
    std::snprintf(cientifica.data(), cientifica.size(), "%.14e", std::fabs(valor));
    std::string digitos;
    const char* p = cientifica.data();
    for (; *p != 'e'; ++p)
        if (es_digito(*p)) digitos += *p;
    ++p;
    if (*p == '+') ++p;
    int exponente = 0;
    std::from_chars(p, cientifica.data() + cientifica.size(), exponente);
    c.negativo = valor < 0;
    if (exponente < 0) {
        c.decimales = std::string(static_cast<std::size_t>(-exponente - 1), '0') + digitos;
        return c;
    }
    const auto enteros = static_cast<std::size_t>(exponente) + 1;
    digitos.resize(std::max(digitos.size(), enteros), '0');
    c.entero = digitos.substr(0, enteros);
    c.decimales = digitos.substr(enteros);
    return c;
}

void sumar_uno(Cifras& c, std::size_t decimales) {
    std::string todo = c.entero + c.decimales;
    std::size_t i = todo.size();
    while (i > 0 && todo[i - 1] == '9') todo[--i] = '0';
    if (i > 0)
        ++todo[i - 1];
    else
        todo.insert(todo.begin(), '1');
    c.entero = todo.substr(0, todo.size() - decimales);
    c.decimales = todo.substr(todo.size() - decimales);
}

enum class Mitad { fuera, par };

void redondear(Cifras& c, std::size_t decimales, Mitad mitad) {
    const std::string resto = c.decimales.substr(std::min(decimales, c.decimales.size()));
    c.decimales.resize(decimales, '0');
    if (resto[0] < '5') return; // or nothing is left
    const bool exacta = resto.find_first_not_of('0', 1) == std::string::npos && resto[0] == '5';
    const bool ultima_par = (c.entero + c.decimales).back() % 2 == 0; // '0' is even
    if (exacta && mitad == Mitad::par && ultima_par) return;
    sumar_uno(c, decimales);
}

std::string presentar(Cifras c, std::string_view patron) {
    const std::size_t punto = patron.find('.');
    const std::string_view enteros = patron.substr(0, punto);
    const std::size_t decimales = punto == std::string_view::npos ? 0 : patron.size() - punto - 1;
    const auto minimo = static_cast<std::size_t>(std::count(enteros.begin(), enteros.end(), '0'));
    const bool agrupar = enteros.find(',') != std::string_view::npos;
    redondear(c, decimales, Mitad::fuera);
    if (patron.ends_with('#')) c.decimales.erase(c.decimales.find_last_not_of('0') + 1);
    c.entero.erase(0, std::min(c.entero.find_first_not_of('0'), c.entero.size()));
    if (c.entero.size() < minimo) c.entero.insert(0, minimo - c.entero.size(), '0');
    const bool cero = (c.entero + c.decimales).find_first_not_of('0') == std::string::npos;
    std::string texto = c.negativo && !cero ? "-" : "";
    for (std::size_t i = 0; i < c.entero.size(); ++i) {
        texto += c.entero[i];
        const std::size_t faltan = c.entero.size() - 1 - i;
        if (agrupar && faltan > 0 && faltan % 3 == 0) texto += '.';
    }
    if (!c.decimales.empty()) texto += ',' + c.decimales;
    return texto;
}

/// The number at the front of a text whose decimal mark is "." already; 0 when there is none.
double numero_inicial(std::string_view texto) {
    texto = sin_blancos(texto);
    if (texto.starts_with('+')) texto.remove_prefix(1);
    double valor = 0;
    std::from_chars(texto.data(), texto.data() + texto.size(), valor, std::chars_format::fixed);
    return std::isfinite(valor) ? valor : 0;
}

std::string sin_grupos(std::string_view chileno) {
    std::string texto;
    for (const char c : sin_blancos(chileno)) {
        if (c == '.') continue;
        texto += c == ',' ? '.' : c;
    }
    return texto;
}

} // namespace

Decimal Decimal::leer(std::string_view chileno) {
    const std::string texto = sin_grupos(chileno);
    std::size_t i = 0;
    Cifras c;
    if (texto[i] == '-' || texto[i] == '+') c.negativo = texto[i++] == '-';
    while (es_digito(texto[i])) c.entero += texto[i++];
    if (texto[i] == '.')
        for (++i; es_digito(texto[i]); ++i) c.decimales += texto[i];
    c.entero.erase(0, std::min(c.entero.find_first_not_of('0'), c.entero.size()));
    if (c.entero.size() > 24) return {};
    redondear(c, 6, Mitad::fuera);
    Entero m = 0;
    for (const char d : c.entero + c.decimales) m = m * 10 + (d - '0');
    return desde(c.negativo ? -m : m);
}

double Decimal::valor() const {
    return static_cast<double>(static_cast<long double>(millonesimas_) / ESCALA);
}

Decimal Decimal::redondeado() const {
    const Entero mitad = millonesimas_ < 0 ? -ESCALA / 2 : ESCALA / 2;
    return desde((millonesimas_ + mitad) / ESCALA * ESCALA);
}

std::int64_t Decimal::pesos() const {
    using Limite = std::numeric_limits<std::int64_t>;
    return static_cast<std::int64_t>(
        std::clamp<Entero>(redondeado().millonesimas_ / ESCALA, Limite::min(), Limite::max()));
}

std::string Decimal::plano() const {
    if (millonesimas_ % ESCALA == 0 && cabe_en_total(*this)) return std::to_string(pesos());
    std::string texto = formato("0.000000");
    texto.erase(texto.find_last_not_of('0') + 1);
    texto.back() == ',' ? texto.pop_back() : std::replace(texto.begin(), texto.end(), ',', '.');
    return texto;
}

std::string Decimal::formato(std::string_view patron) const {
    Cifras c;
    c.negativo = millonesimas_ < 0;
    const Entero valor = c.negativo ? -millonesimas_ : millonesimas_;
    constexpr Entero CORTO = 1'000'000'000'000'000'000; // what is below needs no slow wide division
    std::string digitos = std::to_string(static_cast<std::uint64_t>(valor < CORTO ? valor : valor % CORTO));
    if (valor >= CORTO)
        digitos = std::to_string(static_cast<std::uint64_t>(valor / CORTO)) +
                  std::string(18 - digitos.size(), '0') + digitos;
    if (digitos.size() < 7) digitos.insert(0, 7 - digitos.size(), '0');
    c.entero = digitos.substr(0, digitos.size() - 6);
    c.decimales = digitos.substr(digitos.size() - 6);
    return presentar(std::move(c), patron);
}

std::string formato(double dblvalor, std::string_view strformato, bool bcero) {
    if (bcero && dblvalor == 0) return "";
    return presentar(cifras_de(dblvalor), strformato);
}

double valnumerobase(std::string_view strnumero) {
    std::string texto(strnumero);
    std::replace(texto.begin(), texto.end(), ',', '.');
    return numero_inicial(texto);
}

double valnumeroformato(std::string_view strnumero) { return numero_inicial(sin_grupos(strnumero)); }

double Round(double valor) {
    Cifras c = cifras_de(valor);
    redondear(c, 0, Mitad::par);
    const double entero = numero_inicial(c.entero);
    return c.negativo && entero != 0 ? -entero : entero;
}

std::optional<std::string> numero_sql(std::string_view chileno) {
    constexpr std::size_t MAXIMO = 18; // what a 64-bit integer holds of any digits
    std::string texto = sin_grupos(chileno);
    if (texto.empty()) return sin_blancos(chileno).empty() ? std::optional<std::string>("0") : std::nullopt;
    std::string signo;
    if (texto[0] == '-' || texto[0] == '+') {
        if (texto[0] == '-') signo = "-";
        texto.erase(0, 1);
    }
    const std::size_t marca = texto.find('.');
    std::string entero = texto.substr(0, marca);
    const std::string decimales = marca == std::string::npos ? "" : texto.substr(marca + 1);
    if (entero.empty() && decimales.empty()) return std::nullopt;
    if (!std::all_of(entero.begin(), entero.end(), es_digito) ||
        !std::all_of(decimales.begin(), decimales.end(), es_digito))
        return std::nullopt;
    entero.erase(0, std::min(entero.find_first_not_of('0'), entero.size()));
    if (entero.size() + decimales.size() > MAXIMO) return std::nullopt;
    if (entero.empty()) entero = "0";
    return signo + entero + (decimales.empty() ? "" : "." + decimales);
}

bool bien_agrupado(std::string_view entero) {
    const std::size_t primero = entero.find('.');
    if (primero == std::string_view::npos) return true;
    if (primero == 0 || primero > 3 || entero[0] == '0' || (entero.size() - primero) % 4 != 0) return false;
    for (std::size_t i = primero; i < entero.size(); ++i)
        if ((entero[i] == '.') != ((i - primero) % 4 == 0)) return false;
    return true;
}

std::optional<std::string> monto_sql(std::string_view escrito, std::size_t decimales) {
    std::string_view t = sin_blancos(escrito);
    if (t.starts_with('-') || t.starts_with('+')) t.remove_prefix(1);
    const std::size_t coma = t.find(',');
    const std::string_view fraccion = coma == std::string_view::npos ? "" : t.substr(coma + 1);
    if (!bien_agrupado(t.substr(0, coma)) || fraccion.size() > decimales ||
        fraccion.find('.') != std::string_view::npos)
        return std::nullopt;
    return numero_sql(escrito);
}

std::int64_t val_entero(std::string_view texto) {
    std::size_t i = 0;
    while (i < texto.size() && (texto[i] == ' ' || (texto[i] >= '\t' && texto[i] <= '\r'))) ++i;
    const bool negativo = i < texto.size() && texto[i] == '-';
    if (i < texto.size() && (texto[i] == '-' || texto[i] == '+')) ++i;
    constexpr auto TOPE = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    const std::uint64_t tope = negativo ? TOPE + 1 : TOPE;
    std::uint64_t n = 0;
    for (; i < texto.size() && es_digito(texto[i]); ++i) {
        const auto d = static_cast<std::uint64_t>(texto[i] - '0');
        if (n > (tope - d) / 10) {
            n = tope;
            break;
        }
        n = n * 10 + d;
    }
    return static_cast<std::int64_t>(negativo ? 0 - n : n);
}

std::string codigo_seis(std::string_view codigo) {
    const std::string_view digitos = sin_blancos(codigo);
    if (digitos.empty() || !std::all_of(digitos.begin(), digitos.end(), es_digito))
        return std::string(codigo);
    const std::size_t primero = std::min(digitos.find_first_not_of('0'), digitos.size());
    std::string texto(digitos.substr(primero));
    if (texto.size() < 6) texto.insert(0, 6 - texto.size(), '0');
    return texto;
}

} // namespace quorvel
