#include "dbtools/sin_clave.h"

#include <regex>

namespace quorvel::dbtools {

std::string sin_clave(const std::string& conexion) {
    static const std::regex clave_url("(postgres(?:ql)?://[^:/@]+):[^@]*@");
    static const std::regex clave_opcion("([?&])password=[^&]*&?");
    std::string texto = std::regex_replace(conexion, clave_url, "$1@");
    texto = std::regex_replace(texto, clave_opcion, "$1");
    while (!texto.empty() && (texto.back() == '?' || texto.back() == '&')) texto.pop_back();
    return texto;
}

} // namespace quorvel::dbtools
