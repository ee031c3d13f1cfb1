#pragma once
#include <string>
#include <vector>

namespace quorvel::dbtools {

/// How one company of a database is doing.
struct EstadoEmpresa {
    int empresa = 0;
    std::string nombre, rut;
    long descuadrados = 0;   ///< vouchers whose debits are not their credits
    long meses_abiertos = 0; ///< months with vouchers in years that have no closing voucher yet
    std::string ultima;      ///< day of the last change, dd/mm/yyyy; empty: no vouchers
};
/// All companies of a database, in the order of their numbers. @throws ErrorSesion
[[nodiscard]] std::vector<EstadoEmpresa> estado_de_empresas(const std::string& conexion);

} // namespace quorvel::dbtools
