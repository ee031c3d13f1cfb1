#include "platform/ui/controls.h"
#include "platform/ui/form.h"

#include <algorithm>

namespace quorvel::ui {

namespace {
bool is_press(const KeyEvent& e) { return !e.ctrl && !e.alt && e.key == Key::character && e.ch == U' '; }
} // namespace

Captioned::Captioned(Form& form, std::string name, std::string caption)
    : Control(form, std::move(name)), caption_(std::move(caption)) {}

void Captioned::SetCaption(std::string caption) {
    if (caption == caption_) return;
    caption_ = std::move(caption);
    Changed();
}

void Captioned::on_shortcut(KeyEvent& e) {
    if (is_stroke(e, shortcut_)) {
        e.handled = true;
        press();
    }
    Control::on_shortcut(e);
}

bool CommandButton::press() {
    if (!can_focus()) return false;
    const bool stays = served_ != nullptr && served_->has_focus();
    if (press_ == Press::leaves && !stays && !SetFocus()) return false;
    if (press_ == Press::commands && !form().leave_for_command()) return false;
    form().atender([this] { Click(); });
    return true;
}

void CommandButton::on_key(KeyEvent& e) {
    if (!is_press(e) && (e.key != Key::enter || e.ctrl || e.alt)) return;
    e.handled = true;
    press();
}

void CheckBox::SetValue(int value) {
    if (value == value_) return;
    value_ = value;
    Changed();
}

bool CheckBox::press() {
    if (!can_focus() || !SetFocus()) return false;
    SetValue(value_ == 0 ? 1 : 0);
    form().atender([this] { Click(); });
    return true;
}

void CheckBox::on_key(KeyEvent& e) {
    if (!is_press(e)) return;
    e.handled = true;
    press();
}

OptionButton::OptionButton(Form& form, std::string name, std::string caption, std::string group)
    : Captioned(form, std::move(name), std::move(caption)), group_(std::move(group)) {}

void OptionButton::SetValue(int value) {
    if (value == value_) return;
    value_ = value;
    Changed();
    if (value_ == 0) return;
    for (Control* c : form().controls()) {
        auto* const other = dynamic_cast<OptionButton*>(c);
        if (other != nullptr && other != this && other->group_ == group_) other->SetValue(0);
    }
}

bool OptionButton::press() {
    if (!can_focus() || !SetFocus()) return false;
    SetValue(1);
    form().atender([this] { Click(); });
    return true;
}

/// @param step -1 or 1 in the group; the ends stay
OptionButton& OptionButton::neighbour(int step) {
    std::vector<OptionButton*> group;
    for (Control* c : form().controls()) {
        auto* const other = dynamic_cast<OptionButton*>(c);
        if (other != nullptr && other->group_ == group_ && other->can_focus()) group.push_back(other);
    }
    const auto here = std::find(group.begin(), group.end(), this) - group.begin();
    return *group[static_cast<std::size_t>(
        std::clamp<std::ptrdiff_t>(here + step, 0, std::ssize(group) - 1))];
}

void OptionButton::on_key(KeyEvent& e) {
    const bool before = e.key == Key::up || e.key == Key::left;
    const bool after = e.key == Key::down || e.key == Key::right;
    if (!is_press(e) && !before && !after) return;
    e.handled = true;
    neighbour(static_cast<int>(after) - static_cast<int>(before)).press();
}

MenuItem::MenuItem(Form& form, std::string name, std::string caption, MenuItem* parent, std::string shortcut,
                   bool separator_before)
    : Captioned(form, std::move(name), std::move(caption)), parent_(parent), separator_(separator_before) {
    SetShortcut(std::move(shortcut));
}

bool MenuItem::press() {
    for (const MenuItem* m = this; m != nullptr; m = m->parent_)
        if (!m->Enabled() || !m->Visible()) return false;
    if (!form().leave_for_command()) return false;
    form().atender([this] { Click(); });
    return true;
}

} // namespace quorvel::ui
