#pragma once

class QApplication;
namespace CLI {
class App;
}

namespace quorvel {

/// What Qt itself says (menus of text boxes, file dialogs, calendars) in Spanish, as the rest of the program.
void hablar_castellano(QApplication& aplicacion);
/// The same for what the command line says by itself: the help and what it cannot read. Before the commands
/// are added, which take it over.
void hablar_castellano(CLI::App& ordenes);

} // namespace quorvel
