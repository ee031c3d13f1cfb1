#include "app/recientes.h"

#include "dbtools/sin_clave.h"

#include <algorithm>
#include <fstream>

namespace quorvel::app {

namespace {
constexpr std::size_t MAXIMO = 12;

void escribir_recientes(const std::filesystem::path& archivo, const std::vector<std::string>& lista) {
    std::error_code ignorado;
    std::filesystem::create_directories(archivo.parent_path(), ignorado);
    std::ofstream salida(archivo, std::ios::trunc);
    for (const auto& linea : lista) salida << linea << '\n';
}
} // namespace

std::vector<std::string> leer_recientes(const std::filesystem::path& archivo) {
    std::vector<std::string> lista;
    std::ifstream entrada(archivo);
    for (std::string linea; std::getline(entrada, linea) && lista.size() < MAXIMO;)
        if (!linea.empty()) lista.push_back(linea);
    return lista;
}

void anotar_reciente(const std::filesystem::path& archivo, const std::string& conexion) {
    auto lista = leer_recientes(archivo);
    const std::string limpia = dbtools::sin_clave(conexion);
    std::erase(lista, limpia);
    lista.insert(lista.begin(), limpia);
    if (lista.size() > MAXIMO) lista.resize(MAXIMO);
    escribir_recientes(archivo, lista);
}

void olvidar_reciente(const std::filesystem::path& archivo, const std::string& conexion) {
    auto lista = leer_recientes(archivo);
    std::erase(lista, conexion);
    escribir_recientes(archivo, lista);
}

} // namespace quorvel::app
