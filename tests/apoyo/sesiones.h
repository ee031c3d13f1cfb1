#pragma once
#include "platform/db/clsConexion.h"

#include <memory>
#include <string>

namespace quorvel::apoyo {

enum class Motor { sqlite, postgres };
constexpr Motor MOTORES[] = {Motor::sqlite, Motor::postgres};

[[nodiscard]] std::string nombre(Motor motor);
/// Connection text of an empty database: a file in a folder that goes away at exit, or a database of
/// pg_conexion_nueva().
[[nodiscard]] std::string conexion_nueva(Motor motor);
/// Connection text of a copy of a database that nobody uses.
[[nodiscard]] std::string copia_de(const std::string& conexion);
/// A session on an empty database of its own.
[[nodiscard]] std::unique_ptr<clsConexion> sesion_nueva(Motor motor);
/// A folder that goes away at exit.
[[nodiscard]] std::string carpeta_nueva();
/// Runs a statement. @throws ErrorSesion with the session's last error when it is refused
void ejecutar(clsConexion& db, const std::string& sql);
/// Rows of a query, cells joined by "|", rows by ";": "1|a;2|b".
[[nodiscard]] std::string filas(clsConexion& db, const std::string& sql);

} // namespace quorvel::apoyo
