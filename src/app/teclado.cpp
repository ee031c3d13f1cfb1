#include "app/teclado.h"

#include "qt/text.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

namespace quorvel::app {

QWidget* Teclado::destino() {
    QWidget* window = QApplication::activeModalWidget();
    if (window == nullptr) window = QApplication::activeWindow();
    if (window == nullptr) return nullptr;
    return window->focusWidget() != nullptr ? window->focusWidget() : window;
}

void Teclado::tecla(Qt::Key key, Qt::KeyboardModifiers modifiers, const std::string& text) {
    QCoreApplication::processEvents();
    const QPointer<QWidget> target(destino());
    if (!target) return;
    ++count_;
    QKeyEvent override(QEvent::ShortcutOverride, key, modifiers, qt::to_qt(text));
    QApplication::sendEvent(target, &override);
    QKeyEvent press(QEvent::KeyPress, key, modifiers, qt::to_qt(text));
    if (target) QApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, qt::to_qt(text));
    if (target) QApplication::sendEvent(target, &release);
    QCoreApplication::processEvents();
}

void Teclado::escribir(const std::string& text) {
    for (const char32_t ch : qt::to_qt(text).toUcs4()) {
        const QString one = QString::fromUcs4(&ch, 1);
        tecla(static_cast<Qt::Key>(one.toUpper().at(0).unicode()), Qt::NoModifier, qt::to_std(one));
    }
}

} // namespace quorvel::app
