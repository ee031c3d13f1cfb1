#pragma once
#include "voucher/comprobante.h"
#include "voucher/configuracion.h"
#include "voucher/rechazo.h"

#include <array>
#include <functional>

namespace quorvel {

/// What the checks look at. The RUT check rewrites its box and runs before, on the screen.
struct EntradaValidacion {
    const Comprobante& c;
    const Configuracion& k;
    Maestros& maestros;
    clsConexion& db;
    Fecha hoy;
    bool nuevo = false;
    bool editando = false; ///< a cell edit is open or a row is being added
};
/// All checks of a voucher in their fixed order; nothing when the voucher may be saved. @throws ErrorSesion
[[nodiscard]] std::optional<Rechazo> ValidarComprobante(const EntradaValidacion& e);
[[nodiscard]] std::optional<Rechazo> ValidarLibro(const EntradaValidacion& e);
/// Hears a refusal. @return false stops the checks
using OyeRechazo = std::function<bool(Rechazo)>;
/// The same steps without stopping at the first: every refusal that does not merely follow from another.
/// @return false when the listener stopped @throws ErrorSesion
bool revisar_comprobante(const EntradaValidacion& e, const OyeRechazo& oye);
bool revisar_libro(const EntradaValidacion& e, const OyeRechazo& oye);
bool revisar_lineas(const std::vector<Linea>& lineas, Recordset& cuentas, const OyeRechazo& oye);
/// The refusal at which the checks stop. @param revisar runs them with the listener that it is given
template <class Revisar> [[nodiscard]] std::optional<Rechazo> primer_rechazo(Revisar&& revisar) {
    std::optional<Rechazo> primero;
    revisar([&](Rechazo r) {
        primero = std::move(r);
        return false;
    });
    return primero;
}
/// What identifies the document that a voucher of its book refers to, so that it is entered once: book, kind,
/// RUT, number. Nothing for books without one.
using DocumentoReferido = std::array<std::string, 4>;
[[nodiscard]] std::optional<DocumentoReferido> documento_referido(const Comprobante& c);
/// The checks against period, open year and closing voucher alone. @throws ErrorSesion
[[nodiscard]] std::optional<Rechazo> rechazo_periodo(const Comprobante& c, const Configuracion& k,
                                                     clsConexion& db, Fecha hoy);
/// Of those, what a closed year alone forbids. @throws ErrorSesion
[[nodiscard]] std::optional<Rechazo> rechazo_cierre(const Comprobante& c, const Configuracion& k,
                                                    clsConexion& db);
/// The detail line checks, then the exact sums.
[[nodiscard]] std::optional<Rechazo> ValidarLineas(const std::vector<Linea>& lineas, Recordset& cuentas);
/// The year's closing voucher is recorded, still exists and is not annulled. @throws ErrorSesion
[[nodiscard]] bool cierre_vigente(clsConexion& db, int empresa, const Configuracion& k);
/// The voucher has the identity that the configuration records for the closing voucher.
[[nodiscard]] bool es_comprobante_cierre(const Comprobante& c, const Configuracion& k);

} // namespace quorvel
