#pragma once
#include <QPalette>

class QApplication;

namespace quorvel::app {

enum class Tema { sistema, claro, oscuro };
/// The colours of the light or the dark look.
[[nodiscard]] QPalette paleta(bool oscuro);
/// Look of the whole program: one style on every system, the colours of the palette and nothing else.
void aplicar_estilo(QApplication& aplicacion, Tema tema);

} // namespace quorvel::app
