#include "platform/files/tabla_csv.h"

#include "platform/files/codepage.h"
#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel {
namespace {

int linea_de(std::string_view bytes, std::size_t lugar) {
    return 1 + static_cast<int>(
                   std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(lugar), '\n'));
}

char separador(std::string_view bytes) {
    const std::string_view titulo = bytes.substr(0, bytes.find('\n'));
    for (const char c : {';', '\t', ','})
        if (titulo.find(c) != std::string_view::npos) return c;
    return ';';
}

/// One character after the other; a quote opens only at a cell's beginning.
void separar(std::string_view texto, char separa, TablaCsv& tabla) {
    FilaCsv fila{1, {""}};
    int linea = 1, cita = 1;
    bool citada = false;
    const auto cerrar = [&] {
        const bool en_blanco =
            std::ranges::all_of(fila.celdas, [](const std::string& c) { return recortar(c).empty(); });
        if (!en_blanco) tabla.filas.push_back(std::move(fila));
        fila = {linea, {""}};
    };
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const char c = texto[i];
        if (c == '\n') ++linea;
        if (citada) {
            if (c != '"')
                fila.celdas.back() += c;
            else if (i + 1 < texto.size() && texto[i + 1] == '"')
                fila.celdas.back() += texto[++i];
            else
                citada = false;
        } else if (c == '"' && fila.celdas.back().empty()) {
            citada = true;
            cita = linea;
        } else if (c == separa) {
            fila.celdas.emplace_back();
        } else if (c == '\n') {
            cerrar();
        } else if (c != '\r') {
            fila.celdas.back() += c;
        }
    }
    cerrar();
    if (citada) tabla.comilla_abierta = cita;
}

} // namespace

std::optional<std::size_t> TablaCsv::columna(std::string_view titulo) const {
    const auto i = std::ranges::find(titulos, titulo);
    if (i == titulos.end()) return std::nullopt;
    return static_cast<std::size_t>(i - titulos.begin());
}

TablaCsv leer_tabla_csv(std::string_view bytes) {
    constexpr std::string_view MARCA = "\xEF\xBB\xBF";
    TablaCsv tabla;
    if (bytes.starts_with(MARCA)) bytes.remove_prefix(MARCA.size());
    std::string texto(bytes);
    if (!es_utf8(bytes)) {
        Converted leido = Codepage().from_windows1252(bytes);
        if (leido.bad) {
            tabla.byte_ajeno = linea_de(bytes, *leido.bad);
            return tabla;
        }
        texto = std::move(leido.text);
    }
    separar(texto, separador(texto), tabla);
    if (tabla.filas.empty()) return tabla;
    for (const std::string& titulo : tabla.filas.front().celdas)
        tabla.titulos.push_back(sin_acentos(recortar(titulo)));
    tabla.filas.erase(tabla.filas.begin());
    return tabla;
}

} // namespace quorvel
