#include "dbtools/guion.h"

#include "text/letras_utf8.h"

#include <regex>
#include <sstream>

namespace quorvel::dbtools {
namespace {

std::string sin_comentarios(const std::string& guion) {
    std::istringstream lineas(guion);
    std::string limpio;
    for (std::string linea; std::getline(lineas, linea);) limpio += linea.substr(0, linea.find("--")) + "\n";
    return limpio;
}

/// Splits at a separator that stands outside parentheses and quotes.
std::vector<std::string> partir(const std::string& texto, char separador) {
    std::vector<std::string> partes(1);
    int nivel = 0;
    bool comillas = false;
    for (const char c : texto) {
        if (c == '\'') comillas = !comillas;
        if (!comillas) nivel += (c == '(') - (c == ')');
        if (c == separador && nivel == 0 && !comillas)
            partes.emplace_back();
        else
            partes.back() += c;
    }
    return partes;
}

std::string primera_palabra(const std::string& texto) {
    std::string palabra;
    std::istringstream(texto) >> palabra;
    return palabra;
}

std::string sin_comillas(std::string nombre) {
    std::erase_if(nombre, [](char c) { return c == '"' || c == '[' || c == ']' || c == '`'; });
    return nombre;
}

Tabla leer_tabla_sql(const std::string& nombre, const std::string& cuerpo) {
    static const std::regex OBLIGATORIA(R"(\b(?:not null|primary key)\b)");
    Tabla tabla{nombre, {}, {}, {}};
    for (const std::string& parte : partir(cuerpo, ',')) {
        const std::string columna = primera_palabra(parte);
        if (columna == "primary") continue;
        tabla.columnas.push_back(columna);
        if (!std::regex_search(parte, OBLIGATORIA)) tabla.anulables.push_back(columna);
    }
    return tabla;
}

} // namespace

std::string sin_obligacion(const std::string& definicion, const std::set<std::string>& columnas) {
    static const std::regex OBLIGACION(R"(\s+not\s+null\b)", std::regex::icase);
    const std::size_t abre = definicion.find('('), cierra = definicion.rfind(')');
    if (abre == std::string::npos || cierra < abre) return definicion;
    std::string cuerpo;
    for (const std::string& parte : partir(definicion.substr(abre + 1, cierra - abre - 1), ',')) {
        const bool suya = columnas.contains(sin_comillas(minusculas(primera_palabra(parte))));
        const auto una = std::regex_constants::format_first_only; // whatever else was not split off
        cuerpo +=
            (cuerpo.empty() ? "" : ",") + (suya ? std::regex_replace(parte, OBLIGACION, "", una) : parte);
    }
    return definicion.substr(0, abre + 1) + cuerpo + definicion.substr(cierra);
}

Esquema leer_esquema(const std::string& guion) {
    static const std::regex TABLA(R"(^\s*create table (\w+) \()"),
        INDICE(R"(^\s*create (?:unique )?index (\w+)\s)");
    Esquema esquema;
    for (const std::string& sentencia : partir(sin_comentarios(guion), ';')) {
        std::smatch m;
        if (std::regex_search(sentencia, m, TABLA)) {
            const std::string cuerpo = m.suffix().str();
            esquema.tablas.push_back(leer_tabla_sql(m[1], cuerpo.substr(0, cuerpo.rfind(')'))));
            esquema.tablas.back().sentencia = sentencia;
        } else if (std::regex_search(sentencia, m, INDICE)) {
            esquema.indices.push_back({m[1], sentencia});
        }
    }
    return esquema;
}

} // namespace quorvel::dbtools
