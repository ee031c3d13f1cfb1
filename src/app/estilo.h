#pragma once

class QApplication;

namespace quorvel {

enum class Tema { sistema, claro, oscuro };
/// Look of the whole program: one style on every system, the colours of the palette and nothing else.
void aplicar_estilo(QApplication& aplicacion, Tema tema);

} // namespace quorvel
