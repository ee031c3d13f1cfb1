#pragma once
#include "interchange/archivo_comprobante.h"
#include "oficina/problemas.h"
#include "platform/db/clsConexion.h"
#include "voucher/rechazo.h"

#include <functional>

namespace quorvel::oficina {

/// What a new voucher may choose from, and what it starts with.
struct Listas {
    std::vector<std::string> documentos, otros_impuestos; ///< codes
    std::string moneda;
};
/// @throws ErrorSesion
[[nodiscard]] Listas leer_listas(clsConexion& db);

/// The new voucher that the screen would hold after reading the file. Where the screen keeps what it had and
/// leaves the rest to the person, a problem is told. @param c as the file has it
[[nodiscard]] Comprobante armar_comprobante(Comprobante c, const Listas& listas, const AvisoProblema& aviso);
/// Where in the file a refusal of the checks points to.
[[nodiscard]] ProblemaArchivo situar(const Rechazo& r);

} // namespace quorvel::oficina
