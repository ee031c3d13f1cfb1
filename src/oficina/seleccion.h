#pragma once
#include "oficina/oficina.h"
#include "voucher/comprobante.h"

#include <optional>
#include <vector>

namespace CLI {
class App;
}

namespace quorvel::oficina {

/// Which saved vouchers a command takes; what is empty does not matter.
struct Seleccion {
    std::string desde, hasta, libro, documento, numeros;
};
void agregar_seleccion(CLI::App& comando, Seleccion& s);
/// "15" or "15-30" as a pair. @throws std::invalid_argument in Spanish
[[nodiscard]] std::optional<std::pair<std::int64_t, std::int64_t>> leer_numeros(const std::string& texto);
/// A date of the command line, dd/mm/yyyy or yyyy-mm-dd. @throws std::invalid_argument in Spanish
[[nodiscard]] std::optional<Fecha> leer_fecha_opcion(const std::string& texto);

struct Elegidos {
    std::vector<Clave> claves; ///< by date, kind and number
    std::size_t omitidos = 0;  ///< annulled or temporary: there is nothing on them to hand out
};
/// Vouchers that the user may see. @throws ErrorSesion, std::invalid_argument
[[nodiscard]] Elegidos elegir(const Oficina& oficina, const Seleccion& s);
/// A voucher with its lines. @throws ErrorSesion, std::runtime_error when it is there no longer
[[nodiscard]] Comprobante leer_comprobante(clsConexion& db, const Clave& clave);

/// A file name without extension for a voucher, whatever its number holds: letters, digits, "-" and "_" only,
/// so that it stays in its folder.
[[nodiscard]] std::string nombre_de_archivo(const Clave& clave);
/// How messages call a voucher.
[[nodiscard]] std::string nombre_de_comprobante(const Clave& clave);

} // namespace quorvel::oficina
