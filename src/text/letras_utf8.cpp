#include "text/letras_utf8.h"

#include "text/blancos.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>

namespace quorvel {
namespace {

constexpr bool continua(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// Applies a function to each code point; bytes that are no UTF-8 become U+FFFD.
template <class F> std::string por_letra(std::string_view texto, F&& cambiar) {
    std::string salida;
    salida.reserve(texto.size());
    const auto* p = reinterpret_cast<const utf8proc_uint8_t*>(texto.data());
    auto resto = static_cast<utf8proc_ssize_t>(texto.size());
    while (resto > 0) {
        utf8proc_int32_t letra = 0;
        utf8proc_ssize_t n = utf8proc_iterate(p, resto, &letra);
        if (n <= 0) {
            n = 1;
            letra = 0xFFFD;
        }
        p += n;
        resto -= n;
        utf8proc_uint8_t bytes[4];
        const utf8proc_ssize_t escritos = utf8proc_encode_char(cambiar(letra), bytes);
        salida.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(escritos));
    }
    return salida;
}

bool es_ascii(char c) { return (static_cast<unsigned char>(c) & 0x80U) == 0; }
bool solo_ascii(std::string_view t) { return std::ranges::all_of(t, es_ascii); }
char minuscula(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

std::string transformar(std::string_view texto, int opciones) {
    const std::string valido = por_letra(texto, [](utf8proc_int32_t l) { return l; });
    utf8proc_uint8_t* salida = nullptr;
    const utf8proc_ssize_t n = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(valido.data()),
                                            static_cast<utf8proc_ssize_t>(valido.size()), &salida,
                                            static_cast<utf8proc_option_t>(opciones));
    if (n < 0) return valido;
    std::string resultado(reinterpret_cast<const char*>(salida), static_cast<std::size_t>(n));
    std::free(salida); // NOLINT: utf8proc hands over a malloc block
    return resultado;
}

} // namespace

std::string primeros(std::string_view texto, std::size_t n) {
    std::size_t i = 0;
    while (i < texto.size()) {
        if (!continua(texto[i]) && n-- == 0) break;
        ++i;
    }
    return std::string(texto.substr(0, i));
}

std::size_t largo(std::string_view texto) {
    return static_cast<std::size_t>(
        std::count_if(texto.begin(), texto.end(), [](char c) { return !continua(c); }));
}

std::string mayusculas(std::string_view texto) { return por_letra(texto, utf8proc_toupper); }

std::string minusculas(std::string_view texto) {
    if (!solo_ascii(texto)) return por_letra(texto, utf8proc_tolower);
    std::string salida(texto);
    std::ranges::transform(salida, salida.begin(), minuscula);
    return salida;
}

std::string sin_acentos(std::string_view texto) {
    if (solo_ascii(texto)) return minusculas(texto);
    return minusculas(transformar(texto, UTF8PROC_STABLE | UTF8PROC_DECOMPOSE | UTF8PROC_STRIPMARK));
}

std::string recortar(std::string_view texto) { return std::string(sin_blancos(texto)); }

std::string recortar_fin(std::string_view texto) {
    return std::string(texto.substr(0, texto.find_last_not_of(' ') + 1));
}

bool es_utf8(std::string_view texto) {
    const auto* p = reinterpret_cast<const utf8proc_uint8_t*>(texto.data());
    auto resto = static_cast<utf8proc_ssize_t>(texto.size());
    for (utf8proc_ssize_t n = 0; resto > 0; p += n, resto -= n) {
        utf8proc_int32_t letra = 0;
        n = utf8proc_iterate(p, resto, &letra);
        if (n <= 0) return false;
    }
    return true;
}

std::string normalizar(std::string_view texto) {
    if (solo_ascii(texto)) return std::string(texto);
    return transformar(texto, UTF8PROC_STABLE | UTF8PROC_COMPOSE);
}

std::string sin_controles(std::string_view texto) {
    std::string salida(texto);
    for (char& c : salida)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
    return salida;
}

std::string reemplazar(std::string_view texto, std::string_view que, std::string_view por) {
    std::string salida;
    if (que.empty()) return std::string(texto);
    std::size_t desde = 0;
    for (std::size_t i; (i = texto.find(que, desde)) != std::string_view::npos; desde = i + que.size()) {
        salida += texto.substr(desde, i - desde);
        salida += por;
    }
    salida += texto.substr(desde);
    return salida;
}

bool igual_sin_caso(std::string_view a, std::string_view b) {
    const auto [i, j] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char x, char y) { return minuscula(x) == minuscula(y); });
    if (i == a.end() || j == b.end()) return i == a.end() && j == b.end();
    return (!es_ascii(*i) || !es_ascii(*j)) && minusculas(a) == minusculas(b);
}

} // namespace quorvel
