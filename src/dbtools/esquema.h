#pragma once
#include <functional>
#include <string>

namespace quorvel::dbtools {

class Base;

/// Creates every table and index of the accounting database. An embedded database that does not exist comes
/// into being; a failure leaves everything as it was.
/// @param conexion "sqlite:PATH", a plain path or "postgresql://…"
/// @throws ErrorSesion; also when the database holds vouchers' tables already
void crear_esquema(const std::string& conexion);
/// The same on an open connection and inside its transaction.
void crear_esquema(Base& base);

/// Runs a piece of work on a database that may not exist yet, in one transaction; when it fails, a file that
/// came into being for it goes away again.
void en_transaccion(const std::string& conexion, const std::function<void(Base&)>& trabajo);

} // namespace quorvel::dbtools
