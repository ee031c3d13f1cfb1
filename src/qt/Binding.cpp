#include "qt/Binding.h"

#include "qt/keys.h"
#include "qt/text.h"

#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QWidget>

namespace quorvel::qt {

Binding::Binding(QWidget& widget, ui::Control& control) : widget_(&widget), control_(control) {
    follow(control.Changed, [this] { pull(); });
}

Binding::~Binding() = default;

void Binding::set_caption_label(QLabel* label) {
    label_ = label;
    if (widget_->accessibleName().isEmpty()) widget_->setAccessibleName(label->text());
}

void Binding::pull() {
    widget_->setEnabled(control_.Enabled());
    widget_->setVisible(control_.Visible());
    if (label_) {
        label_->setVisible(control_.Visible());
        label_->setEnabled(control_.Enabled());
    }
    if (!control_.ToolTip().empty()) widget_->setToolTip(to_qt(control_.ToolTip()));
    pull_state();
}

void Binding::watch(QWidget& widget, bool door_on_press) {
    door_on_press_ = door_on_press;
    // Qt never moves the focus on its own: keys and clicks ask the form's focus door, the form tells the
    // view.
    widget.setFocusPolicy(Qt::TabFocus);
    widget.installEventFilter(this);
}

bool Binding::key_pressed(QKeyEvent& event) {
    auto e = translate(event);
    if (!e) return false;
    if (!control_.has_focus() && !control_.SetFocus()) return true;
    control_.form().send_key(*e);
    // Alt belongs to the menus when nobody wanted it; every other key ends here.
    return e->handled || !e->alt;
}

bool Binding::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (!(static_cast<QKeyEvent*>(event)->modifiers() & Qt::AltModifier)) event->accept();
        return false;
    case QEvent::KeyPress: return key_pressed(*static_cast<QKeyEvent*>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: return door_on_press_ && !control_.has_focus() && !control_.SetFocus();
    case QEvent::FocusIn: {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
            reason == Qt::ShortcutFocusReason) {
            if (!control_.has_focus()) control_.SetFocus();
        }
        return false;
    }
    case QEvent::Wheel: return !control_.has_focus();
    default: return QObject::eventFilter(watched, event);
    }
}

} // namespace quorvel::qt
