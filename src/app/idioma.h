#pragma once

class QApplication;

namespace quorvel::app {

/// What Qt itself says (menus of text boxes, file dialogs, calendars) in Spanish, as the rest of the program.
void hablar_castellano(QApplication& aplicacion);

} // namespace quorvel::app
