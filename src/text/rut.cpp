#include "text/rut.h"

#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel {
namespace {

constexpr const char* SIN_GUION = "El rut no es válido.";
constexpr const char* GUION_MAL_PUESTO = "El rut no es válido";
constexpr const char* DIGITO_ERRADO = "El rut no es Válido";

char digito_verificador(std::string_view numero) {
    int suma = 0, peso = 2;
    for (auto d = numero.rbegin(); d != numero.rend(); ++d) {
        suma += (*d - '0') * peso;
        peso = peso == 7 ? 2 : peso + 1;
    }
    const int r = 11 - suma % 11;
    if (r == 11) return '0';
    return r == 10 ? 'K' : static_cast<char>('0' + r);
}

std::string agrupado(std::string_view digitos) {
    std::string texto;
    for (std::size_t i = 0; i < digitos.size(); ++i) {
        if (i > 0 && (digitos.size() - i) % 3 == 0) texto += '.';
        texto += digitos[i];
    }
    return texto;
}

ResultadoRut rechazo(const char* mensaje) { return {false, "", mensaje}; }

} // namespace

ResultadoRut validarut(std::string_view strrut) {
    const std::string rut = recortar(reemplazar(strrut, ".", ""));
    if (rut.empty()) return {true, "", ""};
    const std::size_t guion = rut.find('-');
    if (guion == std::string::npos || rut == "0-0") return rechazo(SIN_GUION);
    const bool penultimo = rut.size() >= 2 && rut[rut.size() - 2] == '-';
    if (!penultimo) return rechazo(GUION_MAL_PUESTO);
    std::string_view numero = std::string_view(rut).substr(0, rut.size() - 2);
    const char ultimo = rut.back() == 'k' ? 'K' : rut.back();
    const auto es_digito = [](char c) { return c >= '0' && c <= '9'; };
    if (!std::all_of(numero.begin(), numero.end(), es_digito)) return rechazo(DIGITO_ERRADO);
    numero.remove_prefix(std::min(numero.find_first_not_of('0'), numero.size()));
    if (numero.empty() || ultimo != digito_verificador(numero)) return rechazo(DIGITO_ERRADO);
    return {true, agrupado(numero) + '-' + ultimo, ""};
}

std::string con_guion(std::string_view rut) {
    std::string texto = recortar(rut);
    if (texto.empty() || texto.find('-') != std::string::npos) return texto;
    texto.insert(primeros(texto, largo(texto) - 1).size(), "-"); // before the last letter, of any width
    return texto;
}

} // namespace quorvel
