#include "dbtools/filas_empresa.h"

#include "platform/db/literal.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace quorvel::dbtools {
namespace {

constexpr std::size_t POR_SENTENCIA = 200;

std::string unidas(const std::vector<std::string>& partes) {
    std::string texto;
    for (const std::string& parte : partes) texto += (texto.empty() ? "" : ",") + parte;
    return texto;
}

/// The cell behind a mark, so that null and '' differ. A server would take a text's trailing blanks off for
/// "||".
std::string marcada(const std::string& motor, const std::string& columna) {
    const std::string con_marca = motor == "sqlite" ? "'='||" + columna : "concat('='," + columna + ")";
    return "case when " + columna + " is null then '' else " + con_marca + " end";
}

std::optional<std::string> sumado(const std::optional<std::string>& celda, std::int64_t mas) {
    std::int64_t n = 0;
    if (celda) std::from_chars(celda->data(), celda->data() + celda->size(), n);
    return n == 0 ? celda : std::to_string(n + mas);
}

std::optional<std::string> cambiado(const std::optional<std::string>& celda,
                                    const std::map<std::string, std::string>& por) {
    const auto otro = celda ? por.find(*celda) : por.end();
    return otro == por.end() ? celda : otro->second;
}

/// A number in one form, any other text as it is.
std::string canonica(const std::optional<std::string>& celda) {
    if (!celda) return {};
    double numero = 0;
    const char* const fin = celda->data() + celda->size();
    const auto r = std::from_chars(celda->data(), fin, numero);
    if (r.ec != std::errc() || r.ptr != fin || celda->find('.') == std::string::npos) return '=' + *celda;
    char digitos[32];
    std::snprintf(digitos, sizeof digitos, "=%.15g", numero);
    return digitos;
}

} // namespace

std::vector<Celdas> leer_filas(Base& base, const TablaMovida& tabla, const std::string& condicion) {
    std::vector<std::string> marcadas;
    for (const std::string& columna : tabla.columnas) marcadas.push_back(marcada(base.motor(), columna));
    std::vector<Celdas> filas;
    for (const auto& leida :
         base.consultar("select " + unidas(marcadas) + " from " + tabla.nombre + condicion)) {
        Celdas& fila = filas.emplace_back();
        for (const std::string& celda : leida)
            fila.push_back(celda.empty() ? std::nullopt : std::optional(celda.substr(1)));
    }
    return filas;
}

void escribir_filas(Base& base, const TablaMovida& tabla, const std::vector<Celdas>& filas) {
    const std::string inserta = "insert into " + tabla.nombre + "(" + unidas(tabla.columnas) + ") values ";
    for (std::size_t i = 0; i < filas.size();) {
        std::string sql = inserta;
        for (std::size_t n = 0; n < POR_SENTENCIA && i < filas.size(); ++n, ++i) {
            std::vector<std::string> valores;
            for (const auto& celda : filas[i]) valores.push_back(celda ? sql_texto(*celda) : "null");
            sql += (n > 0 ? ",(" : "(") + unidas(valores) + ")";
        }
        base.ejecutar(sql);
    }
}

Celdas trasladada(const TablaMovida& tabla, Celdas fila, const Codigos& codigos) {
    const bool historia = tabla.nombre.ends_with("historia"); // as it was, or its sums would not be its own
    for (std::size_t i = 0; i < fila.size(); ++i) {
        const std::string& columna = tabla.columnas[i];
        if (columna == "empresa") fila[i] = std::to_string(codigos.empresa);
        if (historia) continue;
        if (columna == "comprobante_adjunto") fila[i] = sumado(fila[i], codigos.conjuntos);
        if (columna == "correlativo") fila[i] = sumado(fila[i], codigos.correlativos);
        if (columna == "bloqueo_usuario") fila[i] = "0";
        if (columna == "usuario") fila[i] = cambiado(fila[i], codigos.usuarios);
        if (columna == "cliente") fila[i] = cambiado(fila[i], codigos.personas);
    }
    return fila;
}

bool mismas_filas(std::vector<Celdas> unas, std::vector<Celdas> otras) {
    if (unas.size() != otras.size()) return false;
    const auto ordenadas = [](const std::vector<Celdas>& filas) {
        std::vector<std::vector<std::string>> todas;
        for (const Celdas& fila : filas)
            std::ranges::transform(fila, std::back_inserter(todas.emplace_back()), canonica);
        std::ranges::sort(todas);
        return todas;
    };
    return ordenadas(unas) == ordenadas(otras);
}

} // namespace quorvel::dbtools
