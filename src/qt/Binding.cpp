#include "qt/Binding.h"

#include "platform/ui/controls.h"
#include "qt/keys.h"
#include "qt/text.h"

#include <QAbstractScrollArea>
#include <QComboBox>
#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QWidget>

namespace quorvel::qt {

namespace {

/// Why the control is off or what it does, and the key that works it.
QString tip_of(const ui::Control& control, const QString& layout_tip) {
    if (!control.ToolTip().empty()) return to_qt(control.ToolTip());
    const auto* captioned = dynamic_cast<const ui::Captioned*>(&control);
    if (captioned == nullptr || captioned->shortcut().empty()) return layout_tip;
    const QString what = layout_tip.isEmpty() ? to_qt(captioned->Caption()) : layout_tip;
    return what + " (" + shortcut_text(captioned->shortcut()) + ")";
}

} // namespace

Binding::Binding(QWidget& widget, ui::Control& control)
    : widget_(&widget), layout_tip_(widget.toolTip()), control_(control) {
    follow(control.Changed, [this] { pull(); });
}

Binding::~Binding() = default;

void Binding::set_caption_label(QLabel* label) {
    label_ = label;
    for (QWidget* named : {widget_, &focus_target()})
        if (named->accessibleName().isEmpty()) named->setAccessibleName(label->text());
}

void Binding::detach() { links_.clear(); }

void Binding::pull() {
    if (detached()) return;
    widget_->setEnabled(control_.Enabled());
    widget_->setVisible(control_.Visible());
    if (label_) {
        label_->setVisible(control_.Visible());
        label_->setEnabled(control_.Enabled());
    }
    widget_->setToolTip(tip_of(control_, layout_tip_));
    pull_state();
}

void Binding::watch(QWidget& widget, bool door_on_press) {
    door_on_press_ = door_on_press;
    // Qt never moves the focus on its own: keys and clicks ask the form's focus door, the form tells the
    // view.
    widget.setFocusPolicy(Qt::TabFocus);
    widget.installEventFilter(this);
    if (auto* area = qobject_cast<QAbstractScrollArea*>(&widget)) area->viewport()->installEventFilter(this);
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
    if (detached()) return false;
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        claim_before_shortcuts(*static_cast<QKeyEvent*>(event), *widget_);
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
    case QEvent::Wheel: // turning it over a closed list must not choose another entry
        if (qobject_cast<QComboBox*>(watched) == nullptr) return false;
        event->ignore();
        return true;
    default: return QObject::eventFilter(watched, event);
    }
}

} // namespace quorvel::qt
