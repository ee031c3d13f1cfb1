#pragma once
#include <string>

namespace quorvel::bench {

/// Companies 2 to `empresas` on a PostgreSQL database of generar(), each with a copy of the vouchers of the
/// first; balances of the accounts that accountants post to; users from `usuario` on. @throws ErrorSesion
void multiplicar(const std::string& conexion, int empresas, int comprobantes, int usuario, int usuarios);

} // namespace quorvel::bench
