#pragma once

namespace CLI {
class App;
}

namespace quorvel::cli {

/// Adds "db create|check|tune|backup|restore" to a command line. A subcommand ends the program by
/// CLI::RuntimeError with its exit code (oficina/salida.h): RECHAZADO when the check found something or a
/// backup is not what it was, SIN_DATOS when it failed.
void agregar_comando_db(CLI::App& app);

} // namespace quorvel::cli
