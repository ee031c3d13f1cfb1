#include "dbtools/datos.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace quorvel::dbtools {

namespace fs = std::filesystem;

namespace {

const char* entorno(const char* nombre) {
    const char* valor = std::getenv(nombre);
    return valor != nullptr && *valor != '\0' ? valor : nullptr;
}

} // namespace

fs::path carpeta_personal() {
    if (const char* datos = entorno("XDG_DATA_HOME")) return fs::path(datos) / "quorvel";
    if (const char* casa = entorno("HOME")) return fs::path(casa) / ".local/share/quorvel";
    return fs::current_path() / "out";
}

fs::path carpeta_datos() {
    if (const char* elegida = entorno("QUORVEL_DATA")) return elegida;
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

} // namespace quorvel::dbtools
