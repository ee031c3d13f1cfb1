#pragma once
#include <string>

namespace quorvel::apoyo {

/// A fresh database on a PostgreSQL server of this process' own (temporary folder, loopback, stopped at
/// exit).
/// @return its "postgresql://…" text @throws std::runtime_error when the server cannot be started
[[nodiscard]] std::string pg_conexion_nueva();
/// A copy of a database of that server that nobody uses.
[[nodiscard]] std::string pg_copia(const std::string& conexion);
/// Ends every connection of the server's clients, as a failing network would.
void pg_cortar_conexiones();

} // namespace quorvel::apoyo
