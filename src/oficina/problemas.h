#pragma once
#include "oficina/salida.h"

#include <string>
#include <vector>

namespace quorvel::oficina {

/// Something that keeps a file or a voucher from going through.
struct Problema {
    std::string archivo; ///< or the voucher, where there is no file yet
    long linea = 0;      ///< 0: the file as a whole
    std::string campo, mensaje;
    bool ilegible = false; ///< the file itself cannot be read or written
};
/// "file:line: field: message", what is not known left out; always one line.
[[nodiscard]] std::string texto(const Problema& p);
/// SIN_DATOS when some file is unreadable, RECHAZADO when there is any problem, BIEN without.
[[nodiscard]] Salida salida_de(const std::vector<Problema>& problemas);

} // namespace quorvel::oficina
