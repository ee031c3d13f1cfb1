#pragma once
#include "platform/db/avance.h"
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"
#include "voucher/desenlace.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvel {

/// A step of a transaction did not go through: what() is the text for the user.
struct PasoFallido : std::runtime_error {
    explicit PasoFallido(const std::string& texto, Desenlace::Como como_ = Desenlace::rechazado)
        : std::runtime_error(texto), como(como_) {}
    Desenlace::Como como;
};

/// Runs a statement that must succeed. @param texto of the step; empty shows the engine's description, and so
/// does a session that failed itself @throws PasoFallido
void exigir(clsConexion& db, const std::string& sql, const char* texto = "");
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
    /// @throws PasoFallido of the first refused one, or when avance ended it
    void ejecutar(clsConexion& db, const Avance& avance = {}) const;

private:
    struct Texto {
        const char* texto;
        Filas filas;
    };
    std::vector<std::string> sql_;
    std::vector<Texto> textos_;
};
/// Takes hold of the header inside the transaction, so that nobody else changes it before the end, and reads
/// it: the only way to a stored voucher that is about to be written over or removed.
/// @param huella what the screen was loaded with @param texto of the step
/// @throws PasoFallido when another user holds the edit lock, or adelantado with who changed it and when
[[nodiscard]] Comprobante retener_intacto(clsConexion& db, const Clave& clave, int usuario,
                                          const std::string& huella, const char* texto = "");

/// What the user reads when the server did not come back in time to tell whether a change was done.
inline constexpr const char* DESENLACE_DESCONOCIDO =
    "Se perdió la conexión con la base de datos y no se sabe si el cambio quedó hecho. Cuando vuelva, "
    "repítalo: primero se averigua si ya está";
/// What the user reads when neither step nor engine has said anything.
inline constexpr const char* SIN_MOTIVO = "La base de datos rechazó el cambio";
/// After a commit without answer: asks the database, for some seconds while it is away, whether the change is
/// there.
[[nodiscard]] Desenlace averiguar(const std::function<bool()>& quedo_hecho);
/// Runs the steps in a transaction. @param quedo_hecho looks the change up in the database; asked only when
/// the answer to the commit was lost @return refused with the failing step's text
template <class Cambio>
[[nodiscard]] Desenlace en_transaccion(clsConexion& db, Cambio&& cambio,
                                       const std::function<bool()>& quedo_hecho) {
    try {
        Transaccion t{db};
        cambio();
        t.confirmar();
        return {};
    } catch (const CommitSinRespuesta&) {
        return averiguar(quedo_hecho);
    } catch (const PasoFallido& e) {
        return {e.como, *e.what() != '\0' ? e.what() : SIN_MOTIVO};
    } catch (const std::exception& e) {
        return {Desenlace::rechazado, *e.what() != '\0' ? e.what() : SIN_MOTIVO};
    }
}

} // namespace quorvel
