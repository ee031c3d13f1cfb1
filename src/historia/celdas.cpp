#include "historia/celdas.h"

#include <nlohmann/json.hpp>

namespace quorvel {
namespace {

using nlohmann::json;

json leer(const std::string& texto) { return json::parse(texto, nullptr, false); }

std::string celda(const json& j) {
    if (j.is_null()) return {};
    return j.is_string() ? j.get<std::string>() : j.dump();
}

std::vector<std::string> fila(const json& j) {
    std::vector<std::string> celdas;
    if (j.is_array())
        for (const json& una : j) celdas.push_back(celda(una));
    return celdas;
}

} // namespace

std::vector<std::string> leer_celdas(const std::string& lista) { return fila(leer(lista)); }

std::vector<std::vector<std::string>> leer_filas(const std::string& listas) {
    std::vector<std::vector<std::string>> filas;
    const json todas = leer(listas);
    if (todas.is_array())
        for (const json& una : todas) filas.push_back(fila(una));
    return filas;
}

bool mismas_celdas(const std::string& una, const std::string& otra) {
    return una == otra || leer(una) == leer(otra); // numbers compare as numbers
}

} // namespace quorvel
