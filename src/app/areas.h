#pragma once
class QLayout;
class QListWidget;
class QScrollArea;
class QWidget;

namespace quorvel::app {

/// What is too tall for its window is scrolled, and whatever has the focus comes into sight.
[[nodiscard]] QScrollArea* area_con_barra(QLayout* contenido, QWidget* parent);
/// Rows of a list no wider than the list: what does not fit ends in "…".
void acortar_renglones(QListWidget& lista);

} // namespace quorvel::app
