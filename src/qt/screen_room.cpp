#include "qt/screen_room.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace quorvel::qt {

void resize_within_screen(QWidget& window, const QSize& wanted) {
    constexpr QSize frame{4, 32}; // the window manager's, which nobody tells before it is there
    const QScreen* screen = window.screen();
    if (screen == nullptr || QGuiApplication::platformName() == "offscreen") return window.resize(wanted);
    const QRect room = screen->availableGeometry();
    window.resize(wanted.boundedTo(room.size() - frame));
    if (window.parentWidget() != nullptr) return; // beside its owner
    // a dialog that places itself forgets the frame, and its title ends above the screen
    const QSize rest = (room.size() - window.size() - frame) / 2;
    window.move(room.topLeft() + QPoint(rest.width(), rest.height()));
}

} // namespace quorvel::qt
