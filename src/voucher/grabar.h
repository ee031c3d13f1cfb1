#pragma once
#include "voucher/comprobante.h"
#include "voucher/configuracion.h"
#include "voucher/pasos.h"

#include <functional>
#include <map>

namespace quorvel {

struct OpcionesGrabar {
    bool nuevo = false;
    std::int64_t numero_propuesto = 0; ///< proposal when the kind was chosen; a lower number is not recorded
    bool registrar_cierre = false;     ///< the closing voucher just generated
    int anio = 0;                      ///< open year, for the closing data
    Fecha hoy{};
    /// After a cut: the key that the voucher had, so that its invoice follows.
    std::optional<Clave> clave_anterior{};
    /// Called inside the transaction when the proposed attachment set belongs to another voucher by now:
    /// moves the files from the first set to the second.
    /// @return false: the next number is tried, after 50 the save stops
    std::function<bool(const std::string& de, const std::string& a)> mover_adjuntos{};
    AvancePasos avance{}; ///< false ends the save; never asked once the commit has begun
};
struct ResultadoGrabar {
    std::string error; ///< empty when saved
    std::string
        comprobante_adjunto; ///< the set that holds the files now, after a failure too: it may have changed
};
/// Writes the voucher in one transaction: header, last issued number, closing data, lines, attachment rows.
/// The totals are summed again from the lines. Another user's lock stops it. Nothing is written on failure.
[[nodiscard]] ResultadoGrabar GrabarComprobante(clsConexion& db, const Comprobante& c,
                                                const OpcionesGrabar& o);
/// The same steps inside the caller's transaction, which a failure leaves for the caller to roll back.
/// @throws PasoFallido, ErrorSesion
void grabar_en_transaccion_abierta(clsConexion& db, const Comprobante& c, const OpcionesGrabar& o);
/// The result of a save whose answer never came, once the database can tell: nothing when it was not done.
[[nodiscard]] std::optional<ResultadoGrabar> grabado_sin_respuesta(clsConexion& db, const Comprobante& c,
                                                                   Fecha hoy);
/// Takes the voucher's amounts out of the balances, marks it "X", deletes its lines, in one transaction.
/// @return the failing step's text, empty when done
[[nodiscard]] std::string AnularComprobante(clsConexion& db, const Comprobante& c, Fecha f_ult_modificacion);
/// Whether the stored voucher is annulled.
[[nodiscard]] bool esta_anulado(clsConexion& db, const Clave& clave);
/// Deletes lines, attachment rows (never of set 0) and header in one transaction.
/// @return the engine's description, empty when done
/// @param usuario whose lock counts as his own; 0 asks nobody
[[nodiscard]] std::string EliminarComprobante(clsConexion& db, const Clave& clave,
                                              const std::string& conjunto, int usuario = 0);

} // namespace quorvel
