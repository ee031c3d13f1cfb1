#include "app/historia/memoria.h"

#include "dbtools/sin_clave.h"
#include "historia/cadena.h"

#include <fstream>
#include <vector>

namespace quorvel::app {
namespace {

std::vector<std::string> leer(const std::filesystem::path& archivo) {
    std::vector<std::string> lineas;
    std::ifstream entrada(archivo);
    for (std::string linea; std::getline(entrada, linea);) lineas.push_back(linea);
    return lineas;
}

} // namespace

MemoriaHistoria::MemoriaHistoria(std::filesystem::path archivo, std::string conexion, int empresa)
    : archivo_(std::move(archivo)), conexion_(dbtools::sin_clave(conexion)),
      prefijo_(std::to_string(empresa) + "-") {}

std::string MemoriaHistoria::comparar(clsConexion& db) const {
    for (const std::string& linea : leer(archivo_)) {
        const std::size_t tab = linea.find('\t');
        if (tab != std::string::npos && linea.starts_with(prefijo_) && linea.substr(tab + 1) == conexion_)
            return comparar_codigo(db, linea.substr(0, tab));
    }
    return {};
}

void MemoriaHistoria::recordar(clsConexion& db) const {
    const std::string codigo = codigo_historia(db, std::atoi(prefijo_.c_str()));
    std::vector<std::string> lineas = leer(archivo_);
    std::erase_if(lineas, [&](const std::string& l) {
        return l.starts_with(prefijo_) && l.substr(std::min(l.find('\t'), l.size() - 1) + 1) == conexion_;
    });
    if (!codigo.empty()) lineas.push_back(codigo + "\t" + conexion_);
    std::ofstream salida(archivo_, std::ios::trunc);
    for (const std::string& l : lineas) salida << l << '\n';
}

} // namespace quorvel::app
