#include "app/db/datos.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace quorvel {

std::string leer_dato(const std::string& nombre) {
    std::vector<std::string> carpetas{QUORVEL_DATA_SOURCE, QUORVEL_DATA_INSTALL};
    if (const char* elegida = std::getenv("QUORVEL_DATA")) carpetas.insert(carpetas.begin(), elegida);
    for (const std::string& carpeta : carpetas) {
        std::ifstream archivo(carpeta + "/" + nombre, std::ios::binary);
        if (archivo) return {std::istreambuf_iterator<char>(archivo), {}};
    }
    throw std::runtime_error("No se encuentra el archivo de datos " + nombre);
}

std::vector<std::vector<std::string>> leer_tabla(const std::string& nombre) {
    std::istringstream texto(leer_dato(nombre));
    std::vector<std::vector<std::string>> filas;
    std::string linea;
    std::getline(texto, linea); // column names
    while (std::getline(texto, linea)) {
        if (linea.empty() || linea[0] == '#') continue;
        std::vector<std::string>& fila = filas.emplace_back();
        std::istringstream celdas(linea + ";");
        for (std::string celda; std::getline(celdas, celda, ';');) fila.push_back(celda);
    }
    return filas;
}

} // namespace quorvel
