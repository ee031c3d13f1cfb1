#pragma once
#include "text/fecha.h"

#include <string>

namespace quorvel::demo {

/// Fills a database that has no company with a demonstration company: a whole closed year and the present
/// year up to today. Creates the tables first where they are missing; all or nothing.
/// @throws ErrorSesion
void crear_demo(const std::string& conexion);
/// The same as of a given day; equal days give equal databases.
void crear_demo(const std::string& conexion, Fecha hoy);

} // namespace quorvel::demo
