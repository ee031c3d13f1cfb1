#pragma once
#include "platform/db/clsConexion.h"

#include <filesystem>
#include <string>

namespace quorvel {

/// Creates the three staging tables; those that exist stay. Nothing happens in a database that holds the
/// vouchers themselves: the voucher staging table has the name of the header table.
/// @throws SesionFallida when the database cannot be read
void crear_tablas_impresion(clsConexion& reporte);
/// Drops the staging tables, and only those.
void borrar_tablas_impresion(clsConexion& reporte);
/// The session's ctcQuorvel is the staging table and not the header table. @throws SesionFallida
[[nodiscard]] bool es_tabla_impresion(clsConexion& reporte);
/// The session for printing. @throws std::runtime_error when the host has given none
[[nodiscard]] clsConexion& base_informes(clsConexion* reporte);
/// Both sessions reach one database.
[[nodiscard]] bool misma_base(const clsConexion& a, const clsConexion& b);
/// @throws std::runtime_error in Spanish when printing could touch the vouchers or has no staging tables
void exigir_base_de_informes(const clsConexion& db, clsConexion& reporte);
/// The same as an answer.
[[nodiscard]] bool sirve_para_informes(const clsConexion& db, clsConexion& reporte);
/// A definition beside the report database: the folder is the session's Name without its last eight
/// characters. @param tipo_impresora put before the file name; letters and digits only
/// @throws std::runtime_error in Spanish
[[nodiscard]] std::filesystem::path
archivo_informe(const std::string& name, const std::string& tipo_impresora, const std::string& informe);
/// Runs a staging statement. @throws ErrorSesion when the database refuses it
void ejecutar_impresion(clsConexion& reporte, const std::string& sql);

} // namespace quorvel
