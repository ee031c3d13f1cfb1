#pragma once
#include "platform/db/clsConexion.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// An account of the year's configuration: its column, what it is for, whether it usually needs an auxiliary.
struct CuentaConfigurada {
    const char *columna, *titulo;
    bool de_tercero = false;
};
/// In the order in which a save asks for them; the last two take the year's result.
[[nodiscard]] std::span<const CuentaConfigurada> cuentas_configuradas();
/// @return nullptr when no account of the configuration has the column
[[nodiscard]] const CuentaConfigurada* cuenta_configurada(std::string_view columna);

/// A row of the accounting configuration as a form shows it.
struct ConfiguracionAnual {
    int empresa = 0, anio = 0;
    std::optional<Fecha> f_digi_inicial, f_digi_final; ///< nothing: today's date at each use
    std::map<std::string, std::string> cuentas;        ///< by column
    std::string elaborado = "Elaborado", revisado = "Revisado", aprobado = "Aprobado";
    std::string cierre; ///< the recorded closing voucher, "" none; read only
};
/// A remark on a configuration; a grave one keeps it from being saved.
struct Observacion {
    std::string campo, mensaje;
    bool grave = true;
};

/// What an account must be told of before it is chosen, wherever it comes from.
struct FichaCuenta {
    bool imputable = false, auxiliar = false, de_resultado = false;
};
/// What speaks against an account for a use of the configuration. @param ficha nothing: there is no such
/// account @return nothing when it serves
[[nodiscard]] std::optional<Observacion> reparo_de_cuenta(const CuentaConfigurada& que,
                                                          const std::string& codigo,
                                                          const std::optional<FichaCuenta>& ficha);

/// Years that are configured, the last one first. @throws ErrorSesion
[[nodiscard]] std::vector<int> anios_configurados(clsConexion& db, int empresa);
/// @return nothing when the year has no row @throws ErrorSesion
[[nodiscard]] std::optional<ConfiguracionAnual> leer_configuracion_anual(clsConexion& db, int empresa,
                                                                         int anio);
/// Dates out of the year, accounts that are missing, unknown, titles or out of use, doubtful choices.
/// @throws ErrorSesion
[[nodiscard]] std::vector<Observacion> revisar_configuracion(clsConexion& db, const ConfiguracionAnual& c);
/// What a company lacks before a voucher can be entered and what to do about it; empty when nothing.
/// @throws ErrorSesion
[[nodiscard]] std::string falta_para_trabajar(clsConexion& db, int empresa);
/// Writes the row, new or changed; the closing data stay. Inside the caller's transaction or alone.
/// @throws ErrorSesion
void grabar_configuracion(clsConexion& db, const ConfiguracionAnual& c);

/// Accounts that take entries, in the order of the chart. @throws ErrorSesion
struct CuentaImputable {
    std::string codigo, nombre;
};
[[nodiscard]] std::vector<CuentaImputable> cuentas_imputables(clsConexion& db);

} // namespace quorvel
