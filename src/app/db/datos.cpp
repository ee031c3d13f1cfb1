#include "app/db/datos.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace quorvel {

namespace fs = std::filesystem;

fs::path carpeta_datos() {
    if (const char* elegida = std::getenv("QUORVEL_DATA"); elegida != nullptr && *elegida != '\0')
        return elegida;
    std::error_code error;
    const fs::path programa = fs::read_symlink("/proc/self/exe", error);
    for (const fs::path& carpeta :
         {programa.parent_path().parent_path() / "share/quorvel", fs::path(QUORVEL_DATA_SOURCE)})
        if (fs::exists(carpeta / "schema", error)) return carpeta;
    throw std::runtime_error("No se encuentra la carpeta de datos del programa");
}

std::string leer_dato(const std::string& nombre) {
    const fs::path ruta = carpeta_datos() / nombre;
    std::ifstream archivo(ruta, std::ios::binary);
    if (!archivo) throw std::runtime_error("No se encuentra el archivo de datos " + ruta.string());
    return {std::istreambuf_iterator<char>(archivo), {}};
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
