#pragma once
#include "platform/db/clsConexion.h"

#include <optional>
#include <string>

namespace quorvel {

struct EmpresaAnio {
    int empresa = 0, anio = 0;
};
/// Numbers of the vouchers whose lines do not balance, each followed by " - "; empty when all do. Without a
/// filter every company of the database counts. @throws ErrorSesion
[[nodiscard]] std::string lista_descuadrados(clsConexion& db, std::optional<EmpresaAnio> solo = std::nullopt);

} // namespace quorvel
