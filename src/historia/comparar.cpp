#include "historia/comparar.h"

#include "historia/celdas.h"
#include "historia/columnas.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>

namespace quorvel {
namespace {

using Celdas = std::vector<std::string>;

std::string legible(const Celdas& celdas, std::size_t i, const ColumnaGuardada& c) {
    if (i >= celdas.size()) return {};
    if (c.monto) return Decimal::leer(reemplazar(celdas[i], ".", ",")).formato("#,##0");
    if (const auto fecha = leer_fecha_iso(celdas[i])) return fecha_dmy(*fecha);
    return recortar_fin(celdas[i]);
}

template <std::size_t N>
void comparar_fila(const std::string& prefijo, const std::array<ColumnaGuardada, N>& columnas,
                   const Celdas& antes, const Celdas& ahora, std::vector<CeldaComparada>& todas) {
    for (std::size_t i = 0; i < N; ++i) {
        CeldaComparada c{prefijo + columnas[i].rotulo, legible(antes, i, columnas[i]),
                         legible(ahora, i, columnas[i])};
        if (!c.antes.empty() || !c.ahora.empty()) todas.push_back(std::move(c));
    }
}

/// How many lines at the end of both are the same ones, beyond the same ones at their begin.
std::size_t cola_comun(const std::vector<Celdas>& a, const std::vector<Celdas>& b) {
    const auto inicio = std::ranges::mismatch(a, b).in1 - a.begin();
    const std::size_t libres = std::min(a.size(), b.size()) - static_cast<std::size_t>(inicio);
    std::size_t n = 0;
    while (n < libres && a[a.size() - 1 - n] == b[b.size() - 1 - n]) ++n;
    return n;
}

} // namespace

std::vector<CeldaComparada> comparar_versiones(const Version& antes, const Version& ahora) {
    std::vector<CeldaComparada> todas;
    comparar_fila("", COLUMNAS_CABECERA, leer_celdas(antes.cabecera), leer_celdas(ahora.cabecera), todas);
    const auto a = leer_filas(antes.lineas), b = leer_filas(ahora.lineas);
    const std::size_t cola = cola_comun(a, b), total = std::max(a.size(), b.size());
    for (std::size_t i = 0; i < total; ++i) {
        const bool de_cola = i >= total - cola; // counted from the end
        const auto fila = [&](const std::vector<Celdas>& f) {
            const std::size_t n = de_cola ? f.size() - (total - i) : i;
            return n < f.size() && (de_cola || n < f.size() - cola) ? f[n] : Celdas{};
        };
        comparar_fila("Línea " + std::to_string(i + 1) + ", ", COLUMNAS_LINEA, fila(a), fila(b), todas);
    }
    const Celdas x = leer_celdas(antes.adjuntos), y = leer_celdas(ahora.adjuntos);
    for (std::size_t i = 0; i < std::max(x.size(), y.size()); ++i)
        todas.push_back({"Adjunto", i < x.size() ? x[i] : "", i < y.size() ? y[i] : ""});
    return todas;
}

} // namespace quorvel
