#pragma once
class QSize;
class QWidget;

namespace quorvel::qt {

/// Resizes a window to what it wants, and to no more than its screen has room for; one without an owner is
/// placed in the middle.
void resize_within_screen(QWidget& window, const QSize& wanted);

} // namespace quorvel::qt
