#include "text/fecha.h"

#include "text/blancos.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <utility>
#include <vector>

namespace quorvel {
namespace {

struct Partes {
    std::array<int, 3> numero{};
    std::array<std::size_t, 3> digitos{};
};

/// Up to three groups of digits with "/" or "-" between them; a missing one is 0, which no date has.
std::optional<Partes> partir(std::string_view texto) {
    texto = sin_blancos(texto);
    Partes p;
    std::size_t grupo = 0;
    for (const char c : texto) {
        if (c == '/' || c == '-') {
            if (++grupo > 2) return std::nullopt;
            continue;
        }
        if (c < '0' || c > '9' || ++p.digitos[grupo] > 4) return std::nullopt;
        p.numero[grupo] = p.numero[grupo] * 10 + (c - '0');
    }
    return p;
}

std::optional<Fecha> armar(int anio, int mes, int dia) {
    const Fecha f{std::chrono::year{anio}, std::chrono::month{static_cast<unsigned>(mes)},
                  std::chrono::day{static_cast<unsigned>(dia)}};
    if (anio < 1 || mes > 12 || dia > 31 || !f.ok()) return std::nullopt;
    return f;
}

/// Digit groups of "5/3/24"; a text of four, six or eight digits is cut into day, month and year.
std::vector<std::string> grupos(std::string_view texto) {
    std::vector<std::string> partes(1);
    for (const char c : texto) {
        if (c == '/' || c == '-')
            partes.emplace_back();
        else
            partes.back() += c;
    }
    const std::string todo = partes[0];
    if (partes.size() == 1 && (todo.size() == 4 || todo.size() == 6 || todo.size() == 8))
        partes = {todo.substr(0, 2), todo.substr(2, 2), todo.substr(4)};
    if (partes.size() == 2) partes.emplace_back();
    return partes;
}

bool cifras(const std::string& texto, std::size_t maximo) {
    return !texto.empty() && texto.size() <= maximo &&
           texto.find_first_not_of("0123456789") == std::string::npos;
}

std::string escribir(const char* patron, int a, int b, int c) {
    std::array<char, 48> texto{};
    const int n = std::snprintf(texto.data(), texto.size(), patron, a, b, c);
    return std::string(texto.data(), static_cast<std::size_t>(n));
}

std::tm ahora() {
    const std::time_t t = std::time(nullptr);
    std::tm local{};
    localtime_r(&t, &local);
    return local;
}

} // namespace

std::optional<Fecha> leer_fecha(std::string_view texto) {
    const auto p = partir(texto);
    if (!p || p->digitos[2] != 4) return std::nullopt;
    return armar(p->numero[2], p->numero[1], p->numero[0]);
}

std::optional<Fecha> leer_fecha_corta(std::string_view texto, int anio_por_omision) {
    auto partes = grupos(sin_blancos(texto));
    if (partes.size() != 3) return std::nullopt;
    if (partes[0].size() == 4) std::swap(partes[0], partes[2]);
    std::string& anio = partes[2];
    if (anio.empty()) anio = std::to_string(anio_por_omision);
    if (!cifras(partes[0], 2) || !cifras(partes[1], 2) || !cifras(anio, 4)) return std::nullopt;
    if (anio.size() == 2) anio.insert(0, anio < "50" ? "20" : "19");
    return leer_fecha(partes[0] + "/" + partes[1] + "/" + anio);
}

std::optional<Fecha> leer_fecha_mdy(std::string_view texto) {
    const auto p = partir(texto);
    if (!p || p->digitos[2] != 4) return std::nullopt;
    return armar(p->numero[2], p->numero[0], p->numero[1]);
}

std::optional<Fecha> leer_fecha_iso(std::string_view iso) {
    iso = sin_blancos(iso);
    if (iso.size() > 10 && (iso[10] == ' ' || iso[10] == 'T')) iso = iso.substr(0, 10);
    const auto p = partir(iso);
    if (!p || p->digitos[0] != 4) return std::nullopt;
    return armar(p->numero[0], p->numero[1], p->numero[2]);
}

std::string fecha_dmy(Fecha f) { return escribir("%02d/%02d/%04d", dia(f), mes(f), anio(f)); }
std::string fecha_mdy(Fecha f) { return escribir("%02d/%02d/%04d", mes(f), dia(f), anio(f)); }
std::string fecha_iso(Fecha f) { return escribir("%04d-%02d-%02d", anio(f), mes(f), dia(f)); }

Fecha RelojSistema::hoy() const {
    const std::tm t = ahora();
    return Fecha{std::chrono::year{t.tm_year + 1900}, std::chrono::month{static_cast<unsigned>(t.tm_mon + 1)},
                 std::chrono::day{static_cast<unsigned>(t.tm_mday)}};
}

std::string RelojSistema::hora() const {
    const std::tm t = ahora();
    std::array<char, 24> texto{};
    const int n = std::snprintf(texto.data(), texto.size(), "%02d:%02d", t.tm_hour, t.tm_min);
    return std::string(texto.data(), static_cast<std::size_t>(n));
}

} // namespace quorvel
