#pragma once
class QListWidget;

namespace quorvel::app {

/// Rows of a list no wider than the list: what does not fit ends in "…".
void acortar_renglones(QListWidget& lista);

} // namespace quorvel::app
