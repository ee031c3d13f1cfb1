#pragma once
#include "empresa/configuracion_anual.h"
#include "empresa/plan.h"

namespace quorvel {

/// A company that is to come into being.
struct EmpresaNueva {
    int codigo = 0;
    std::string nombre, rut, direccion, giro;
    int anio = 0;
    std::optional<Fecha> desde, hasta; ///< entry period
    std::optional<Plan> plan{};        ///< nothing: the chart that the database has
    std::string usuario{};             ///< the first user's name, when the database has none
};
/// A row of the codes that a database needs before a company can work: table, code, name, value.
using CodigoBase = std::vector<std::string>;

/// What keeps the company from being created, everything at once; nothing is written. @throws ErrorSesion
[[nodiscard]] std::vector<Observacion> revisar_empresa(clsConexion& db, const EmpresaNueva& e);
/// Creates the company, its configuration of the year, the chart's missing accounts and what the database
/// lacks of the codes, all or nothing. @param codigos rows of data/plan/codigos.csv @throws ErrorSesion
void crear_empresa(clsConexion& db, const EmpresaNueva& e, const std::vector<CodigoBase>& codigos);
/// The first code that no company has. @throws ErrorSesion
[[nodiscard]] int proponer_codigo_empresa(clsConexion& db);
/// Accounts of the database's chart. @throws ErrorSesion
[[nodiscard]] std::int64_t contar_cuentas(clsConexion& db);

} // namespace quorvel
