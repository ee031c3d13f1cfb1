#pragma once
#include "platform/db/clsConexion.h"
#include "text/fecha.h"

#include <memory>
#include <optional>
#include <string>

namespace quorvel {

/// The company's accounting configuration of its latest year; everything is empty when it has no row.
struct Configuracion {
    bool existe = false;
    std::optional<Fecha> f_digi_inicial, f_digi_final; ///< null columns are today, evaluated at each use
    bool inicial_es_hoy = false, final_es_hoy = false;
    int anio = 0;
    std::optional<Fecha> f_comp_cierre;
    std::string documento_cierre, num_docum_cierre;
    std::string factura_cobrar, boleta_cobrar, factura_pagar, boleta_pagar, iva, otros_impuestos, iva_compra,
        otros_impuestos_compra, honorarios_pagar, retencion_seg_cat;
    /// "1" when the account requires an auxiliary, otherwise "0".
    std::string req_factura_cobrar, req_boleta_cobrar, req_factura_pagar, req_boleta_pagar,
        req_honorarios_pagar;
    std::string elaborado, revisado, aprobado;
    std::string centro_gan, centro_per;

    [[nodiscard]] std::optional<Fecha> inicio(Fecha hoy) const {
        return inicial_es_hoy ? hoy : f_digi_inicial;
    }
    [[nodiscard]] std::optional<Fecha> fin(Fecha hoy) const { return final_es_hoy ? hoy : f_digi_final; }
};

/// @throws ErrorSesion
[[nodiscard]] Configuracion leer_configuracion(clsConexion& db, int empresa, Fecha hoy);
/// Only what decides whether a voucher may still be written: period, open year, closing voucher.
/// @throws ErrorSesion
[[nodiscard]] Configuracion leer_periodo(clsConexion& db, int empresa, Fecha hoy);
/// Whether a line on the account must carry an auxiliary: "1", otherwise "0" (empty or unknown account too).
[[nodiscard]] std::string req_aux(clsConexion& db, const std::string& cuenta);

/// Master-data recordsets that the screen searches with FindFirst.
struct Maestros {
    std::unique_ptr<Recordset> rsCuentas, rsCentros, rsAuxiliares, rsSubsistemas, rsOtrosImpuestos,
        rsPersonas;
    /// Reopens accounts, cost centres and auxiliaries; with todos the other three as well.
    void reabrir(clsConexion& db, bool todos);
};

} // namespace quorvel
