#pragma once
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <string>

namespace quorvel::pruebas {

/// Inner parts of a control (a list's popup, a header) speak through it.
inline bool is_part(const QWidget* w, const QWidget* window) {
    if (w->objectName().startsWith("qt_menubar")) return true;
    for (const char* part : {"QHeaderView", "QTableCornerButton", "QMenuBarExtension", "QLineEditIconButton"})
        if (w->inherits(part)) return true;
    for (const QWidget* p = w->parentWidget(); p != nullptr && p != window; p = p->parentWidget())
        if (qobject_cast<const QComboBox*>(p) != nullptr ||
            qobject_cast<const QAbstractSpinBox*>(p) != nullptr)
            return true;
    return false;
}

/// The controls of a window that an assistive program could not name.
inline std::string nameless(const QWidget& window) {
    std::string found;
    for (QWidget* w : window.findChildren<QWidget*>()) {
        const bool works = qobject_cast<QAbstractButton*>(w) != nullptr ||
                           qobject_cast<QLineEdit*>(w) != nullptr || qobject_cast<QComboBox*>(w) != nullptr ||
                           qobject_cast<QAbstractItemView*>(w) != nullptr;
        if (!works || is_part(w, &window)) continue;
        // A button is named by its text; a box or a list must not be named by what it holds.
        QString name = w->accessibleName();
        if (const auto* face = QAccessible::queryAccessibleInterface(w);
            name.isEmpty() && face != nullptr && qobject_cast<QAbstractButton*>(w) != nullptr)
            name = face->text(QAccessible::Name);
        if (name.trimmed().isEmpty())
            found += std::string(w->metaObject()->className()) + " " + w->objectName().toStdString() +
                     " in " + w->parentWidget()->objectName().toStdString() + "; ";
    }
    return found;
}

} // namespace quorvel::pruebas
