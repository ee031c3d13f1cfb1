#include "interchange/monto_papel.h"

#include "text/basLetras.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <stdexcept>

namespace quorvel {

MontoPapel monto_papel(const std::string& total) {
    constexpr std::size_t CENTESIMOS = 2;
    const auto cifra = monto_sql(total, CENTESIMOS);
    if (!cifra) throw std::invalid_argument("El monto no es un número como 1.234.567: " + total);
    return {*cifra, mayusculas(Letras(total))};
}

} // namespace quorvel
