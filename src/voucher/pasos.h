#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"

#include <stdexcept>
#include <string>

namespace quorvel {

/// A step of a transaction did not go through: what() is the text for the user.
class PasoFallido : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Runs a statement that must succeed. @param texto of the step; empty shows the engine's description
/// @throws PasoFallido
void exigir(clsConexion& db, const std::string& sql, const char* texto = "");
/// What a stored header says when its voucher is about to change.
struct EstadoGuardado {
    std::string estado;
    std::int64_t bloqueo = 0, conjunto = 0;
};
/// Takes hold of the header inside the transaction, so that nobody else changes it before the end, and reads
/// it. Nothing when it does not exist. @param texto of the step @throws PasoFallido, ErrorSesion
[[nodiscard]] std::optional<EstadoGuardado> retener_cabecera(clsConexion& db, const Clave& clave,
                                                             const char* texto = "");
/// @throws PasoFallido with the read-only text when another user holds the edit lock
void exigir_sin_bloqueo_ajeno(const EstadoGuardado& guardado, int usuario);
/// Runs the steps in a transaction. @return the failing step's text, empty when all was committed
template <class Pasos> [[nodiscard]] std::string en_transaccion(clsConexion& db, Pasos&& pasos) {
    try {
        Transaccion t{db};
        pasos();
        t.confirmar();
        return {};
    } catch (const std::exception& e) {
        return *e.what() != '\0' ? e.what() : "La base de datos rechazó el cambio";
    }
}

} // namespace quorvel
