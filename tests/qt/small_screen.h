#pragma once
#include "nameless.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>
#include <string>

namespace quorvel::pruebas {

/// A laptop of 1366 x 768 at 200 %, less a frame.
inline constexpr QSize SMALL_SCREEN{1366 / 2 - 4, 768 / 2 - 32};

/// What of a window cannot be reached on a small screen: nothing sticks out of it, and whatever gets the
/// focus comes into sight.
inline std::string out_of_reach(QWidget& window) {
    window.resize(SMALL_SCREEN);
    window.show();
    window.activateWindow();
    QCoreApplication::processEvents();
    std::string out;
    if (window.width() > SMALL_SCREEN.width() || window.height() > SMALL_SCREEN.height())
        out += "wants " + std::to_string(window.width()) + "x" + std::to_string(window.height()) + "\n";
    if (const QString folder = qEnvironmentVariable("QUORVEL_FOTOS"); !folder.isEmpty())
        window.grab().save(folder + "/chica_" + window.objectName() + ".png");
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (!w->isVisible() || !w->isEnabled() || !(w->focusPolicy() & Qt::TabFocus) ||
            w->focusProxy() != nullptr || is_part(w, &window))
            continue;
        w->setFocus(Qt::TabFocusReason);
        const auto whole = [w] {
            const QRect seen = w->visibleRegion().boundingRect();
            return seen.width() >= std::min(w->width(), 200) && seen.height() >= std::min(w->height(), 60);
        };
        for (int i = 0; i < 50 && (!w->hasFocus() || !whole()); ++i) // until the view has come to rest
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        if (w->hasFocus() && !whole())
            out += std::string(w->metaObject()->className()) + " " + w->objectName().toStdString() + " " +
                   w->accessibleName().toStdString() + " is not seen\n";
    }
    return out;
}

} // namespace quorvel::pruebas
