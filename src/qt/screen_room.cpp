#include "qt/screen_room.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace quorvel::qt {

void resize_within_screen(QWidget& window, const QSize& wanted) {
    constexpr QSize frame{4, 32}; // the window manager's, which nobody tells before it is there
    const QScreen* screen = window.screen();
    const bool seen = screen != nullptr && QGuiApplication::platformName() != "offscreen";
    window.resize(seen ? wanted.boundedTo(screen->availableSize() - frame) : wanted);
}

} // namespace quorvel::qt
