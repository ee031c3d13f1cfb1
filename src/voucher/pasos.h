#pragma once
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvel {

/// A step of a transaction did not go through: what() is the text for the user.
class PasoFallido : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Runs a statement that must succeed. @param texto of the step; empty shows the engine's description, and so
/// does a session that failed itself @throws PasoFallido
void exigir(clsConexion& db, const std::string& sql, const char* texto = "");
/// What the user reads after he ended a piece of work himself.
inline constexpr const char* CANCELADA = "Operación cancelada, no se ha cambiado nada";
/// Told how many steps of how many are done. @return false ends the work
using AvancePasos = std::function<bool(long hechos, long total)>;
/// Statements that must all succeed, sent together.
class Pasos {
public:
    enum class Filas { cualquiera, alguna };
    /// @param texto of the step; empty shows the engine's description @param filas alguna: a statement that
    /// changes no row has failed
    void agregar(std::string sql, const char* texto = "", Filas filas = Filas::cualquiera) {
        sql_.push_back(std::move(sql));
        textos_.push_back({texto, filas});
    }
    /// @param avance asked between the batches of many statements
    /// @throws PasoFallido of the first refused one, or CANCELADA
    void ejecutar(clsConexion& db, const AvancePasos& avance = {}) const;

private:
    struct Texto {
        const char* texto;
        Filas filas;
    };
    std::vector<std::string> sql_;
    std::vector<Texto> textos_;
};
/// How the refusal begins when the stored voucher is not the one that the screen was loaded with.
inline constexpr const char* CAMBIADO = "Este comprobante ya no es el que abrió: ";
[[nodiscard]] inline bool cambiado_por_otro(const std::string& error) { return error.starts_with(CAMBIADO); }
/// Takes hold of the header inside the transaction, so that nobody else changes it before the end, and reads
/// it: the only way to a stored voucher that is about to be written over or removed.
/// @param huella what the screen was loaded with @param texto of the step
/// @throws PasoFallido when another user holds the edit lock, or with who changed it and when (CAMBIADO)
[[nodiscard]] Comprobante retener_intacto(clsConexion& db, const Clave& clave, int usuario,
                                          const std::string& huella, const char* texto = "");

/// What the user reads when the server did not come back in time to tell whether a change was done.
inline constexpr const char* DESENLACE_DESCONOCIDO =
    "Se perdió la conexión con la base de datos y no se sabe si el cambio quedó hecho. Cuando vuelva, "
    "repítalo: primero se averigua si ya está";
/// After a commit without answer: asks the database, for some seconds while it is away, whether the change is
/// there. @return empty when it is, otherwise what to tell
[[nodiscard]] std::string averiguar(const std::function<bool()>& quedo_hecho);
/// Runs the steps in a transaction. @param quedo_hecho looks the change up in the database; asked only when
/// the answer to the commit was lost @return the failing step's text, empty when all was committed
template <class Cambio>
[[nodiscard]] std::string en_transaccion(clsConexion& db, Cambio&& cambio,
                                         const std::function<bool()>& quedo_hecho) {
    try {
        Transaccion t{db};
        cambio();
        t.confirmar();
        return {};
    } catch (const CommitSinRespuesta&) {
        return averiguar(quedo_hecho);
    } catch (const std::exception& e) {
        return *e.what() != '\0' ? e.what() : "La base de datos rechazó el cambio";
    }
}

} // namespace quorvel
