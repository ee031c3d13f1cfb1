#pragma once
#include "historia/proteccion.h"
#include "platform/db/clsConexion.h"
#include "text/fecha.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>

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
/// The same and what protects the company, in one question to the database.
[[nodiscard]] std::pair<Configuracion, Proteccion> leer_periodo_protegido(clsConexion& db, int empresa,
                                                                          Fecha hoy);
/// Whether a line on the account must carry an auxiliary: "1", otherwise "0" (empty or unknown account too).
[[nodiscard]] std::string req_aux(clsConexion& db, const std::string& cuenta);

enum class Maestro { cuentas, centros, auxiliares, subsistemas, otros_impuestos, personas };

/// Master-data recordsets that the screen searches with FindFirst. Whoever asks first opens one.
class Maestros {
public:
    /// In which session they are opened from now on; those of another are let go.
    void usar(clsConexion& db);
    /// Opens accounts, cost centres and auxiliaries anew; with todos the other three as well.
    /// @throws ErrorSesion, and what could be opened before stays
    void reabrir(clsConexion& db, bool todos);
    /// @throws ErrorSesion
    void reabrir(Maestro m);
    /// To be used at once: the next reopening replaces it.
    /// @throws ErrorSesion when it cannot be opened, std::logic_error without a session
    [[nodiscard]] Recordset& operator[](Maestro m);
    [[nodiscard]] bool abierto(Maestro m) const { return abiertos_[static_cast<std::size_t>(m)] != nullptr; }

private:
    clsConexion* db_ = nullptr;
    std::array<std::unique_ptr<Recordset>, 6> abiertos_;
};

} // namespace quorvel
