#include "text/cuantos.h"

#include "text/numeros.h"

namespace quorvel {

std::string cuantos(std::int64_t n, std::string_view uno, std::string_view varios) {
    return Decimal(n).formato("#,##0") + " " + std::string(n == 1 ? uno : varios);
}

} // namespace quorvel
