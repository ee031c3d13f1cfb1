#pragma once
#include "historia/version.h"
#include "voucher/comprobante.h"
#include "voucher/configuracion.h"
#include "voucher/pasos.h"

#include <functional>

namespace quorvel {

struct OpcionesGrabar {
    bool nuevo = false;
    std::int64_t numero_propuesto = 0; ///< proposal when the kind was chosen; a lower number is not recorded
    bool registrar_cierre = false;     ///< the closing voucher just generated
    int anio = 0;                      ///< open year, for the closing data
    Fecha hoy{};
    /// After a cut: the key that the voucher had, so that its invoice follows.
    std::optional<Clave> clave_anterior{};
    std::string huella{}; ///< the stored voucher that a saved one was loaded with; a new one has none
    /// Called inside the transaction when the proposed attachment set belongs to another voucher by now:
    /// copies the files from the first set to the second. They stay in the first as well, since nobody knows
    /// yet whether the change will be kept. @return false: the next number is tried, after 50 the save stops
    std::function<bool(std::int64_t de, std::int64_t a)> copiar_adjuntos{};
    const char* operacion = nullptr; ///< of its version; none: new, saved or closing
    std::string grupo{};             ///< of the vouchers that one piece of work writes
    /// SHA-256 of an attached file's bytes; asked only where the company keeps a history.
    std::function<std::string(std::int64_t conjunto, const std::string& nombre)> sumar_adjunto{};
    Avance avance{}; ///< false ends the save; never asked once the commit has begun
};
struct ResultadoGrabar {
    Desenlace desenlace;
    std::int64_t comprobante_adjunto = 0; ///< the voucher's set; another than before when files were copied
    std::int64_t copiado = 0; ///< the set that the files were copied into, also when the save failed; 0 none
    std::string huella;       ///< of what is stored now
    bool cierre = false;      ///< it is the year's closing voucher
};
/// Writes the voucher in one transaction: header, last issued number, closing data, lines, attachment rows.
/// The totals are summed again from the lines. Another user's lock stops it, and so does a stored voucher
/// that is not the one that was loaded. Nothing is written on failure.
[[nodiscard]] ResultadoGrabar GrabarComprobante(clsConexion& db, const Comprobante& c,
                                                const OpcionesGrabar& o);
/// The same steps inside the caller's transaction, which a failure leaves for the caller to roll back.
/// @throws PasoFallido, ErrorSesion
void grabar_en_transaccion_abierta(clsConexion& db, const Comprobante& c, const OpcionesGrabar& o);
/// The result of a save whose answer never came, once the database can tell: nothing when it was not done.
[[nodiscard]] std::optional<ResultadoGrabar> grabado_sin_respuesta(clsConexion& db, const Comprobante& c,
                                                                   Fecha hoy);
/// Takes the voucher's amounts out of the balances, marks it "X", deletes its lines, in one transaction.
/// @param huella as it was loaded
[[nodiscard]] Desenlace AnularComprobante(clsConexion& db, const Comprobante& c, Fecha f_ult_modificacion,
                                          const std::string& huella);
/// Whether the stored voucher is annulled.
[[nodiscard]] bool esta_anulado(clsConexion& db, const Clave& clave);
struct ResultadoEliminar {
    Desenlace desenlace;
    std::optional<Comprobante> quien; ///< the header that was deleted, or would have been
};
/// Deletes lines, attachment rows (never of set 0 or of one that another voucher shares) and header in one
/// transaction. @param usuario whose lock counts as his own @param huella as it was loaded
/// @param operacion what its last version says: deleted, or cut to be saved again under another key
[[nodiscard]] ResultadoEliminar EliminarComprobante(clsConexion& db, const Clave& clave, int usuario,
                                                    const std::string& huella,
                                                    const char* operacion = operacion::ELIMINADO);
/// Whether no such voucher is stored.
[[nodiscard]] bool esta_eliminado(clsConexion& db, const Clave& clave);

} // namespace quorvel
