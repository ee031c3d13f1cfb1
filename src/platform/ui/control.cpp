#include "platform/ui/control.h"

#include "platform/ui/form.h"

namespace quorvel::ui {

Control::Control(Form& form, std::string name) : form_(form), name_(std::move(name)) { form_.adopt(this); }

Control::~Control() { form_.abandon(this); }

void Control::SetEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    Changed();
    if (!can_focus() && has_focus()) form_.focus_next();
}

void Control::SetVisible(bool visible) {
    if (visible == visible_) return;
    visible_ = visible;
    Changed();
    if (!can_focus() && has_focus()) form_.focus_next();
}

void Control::SetToolTip(std::string text) {
    if (text == tooltip_) return;
    tooltip_ = std::move(text);
    Changed();
}

bool Control::has_focus() const { return form_.active_control() == this; }

bool Control::SetFocus() { return form_.set_active(this); }

void Control::on_shortcut(KeyEvent& e) {
    for (const Command& command : commands_) {
        if (e.handled || !is_stroke(e, command.shortcut)) continue;
        e.handled = true;
        command.run();
    }
}

void Control::send_key(KeyEvent& e) {
    KeyDown(e);
    if (!e.handled) on_key(e);
    if (e.handled || !has_focus()) return;
    const bool moves =
        e.key == Key::tab || e.key == Key::backtab || (e.key == Key::enter && !e.ctrl && !e.alt);
    if (!moves) return;
    e.handled = true;
    form_.focus_next(e.key == Key::backtab, e.key == Key::enter);
}

} // namespace quorvel::ui
