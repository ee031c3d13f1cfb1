#pragma once
class QScrollArea;
class QSize;
class QWidget;

namespace quorvel::qt {

/// Resizes a window to what it wants, and to no more than its screen has room for; one without an owner is
/// placed in the middle.
void resize_within_screen(QWidget& window, const QSize& wanted);
/// What is larger than its window is scrolled, and whatever has the focus comes into sight.
/// Rows of the content named "fold_…" fold where they are too wide. @param content becomes the area's
[[nodiscard]] QScrollArea* scroll_area(QWidget* content, QWidget* parent);

} // namespace quorvel::qt
