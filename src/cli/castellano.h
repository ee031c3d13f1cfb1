#pragma once

namespace CLI {
class App;
}

namespace quorvel::cli {

/// What the command line says by itself in Spanish: the help and what it cannot read. Before the commands are
/// added, which take it over.
void hablar_castellano(CLI::App& ordenes);

} // namespace quorvel::cli
