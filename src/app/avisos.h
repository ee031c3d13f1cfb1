#pragma once
#include <QString>

class QWidget;

namespace quorvel::app {

// Boxes of the host application's own windows, titled as those of the screens.

void avisar(QWidget* owner, const QString& texto);
void avisar_problema(QWidget* owner, const QString& texto);
/// Yes or no; no is proposed. @return true for yes
[[nodiscard]] bool preguntar(QWidget* owner, const QString& texto);

} // namespace quorvel::app
