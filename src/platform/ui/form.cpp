#include "platform/ui/form.h"

#include "platform/files/engine_files.h"
#include "platform/ui/flag.h"
#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel::ui {

Form::Form(Escritorio& escritorio, std::string name, std::string caption)
    : escritorio_(escritorio), name_(std::move(name)), caption_(std::move(caption)) {}

Form::~Form() {
    if (visible_) {
        visible_ = false;
        escritorio_.close(*this);
    }
    escritorio_.forget(*this);
}

void Form::SetCaption(std::string caption) {
    if (caption == caption_) return;
    caption_ = std::move(caption);
    Changed();
}

void Form::Load() {
    if (loaded_) return;
    loaded_ = true;
    try {
        Form_Load();
    } catch (...) { // a form whose load step failed is loaded afresh by the next attempt
        loaded_ = false;
        throw;
    }
}

void Form::require_showable(bool modal) const {
    if (!modal && escritorio_.waiting())
        throw Busy("Hay una ventana que espera una respuesta: ciérrela antes de abrir otra");
    if (modal && visible_) throw Busy("La pantalla ya está abierta");
}

void Form::Show() {
    require_showable(false);
    Load();
    visible_ = true;
    if (active_ == nullptr) focus_next();
    escritorio_.open(*this, false);
}

void Form::ShowModal() {
    require_showable(true);
    Load();
    visible_ = true;
    if (active_ == nullptr) focus_next();
    ++modal_shows_;
    escritorio_.open(*this, true);
    --modal_shows_;
}

void Form::Hide() {
    if (!visible_) return;
    visible_ = false;
    escritorio_.close(*this);
    Closed();
}

void Form::Unload() {
    unload_wanted_ = closing_ = false;
    if (!loaded_) return;
    loaded_ = false;
    spent_ = true;
    atender([this] { Form_Unload(); });
    active_ = nullptr;
    Hide();
}

bool Form::dismiss() {
    if (!running()) {
        Unload();
        return true;
    }
    unload_wanted_ = closing_ = loaded_; // one of them may be the unload step
    escritorio_.call_off(*this);
    return false;
}

void Form::call_off() {
    closing_ = running();
    if (closing_) escritorio_.call_off(*this);
    Hide();
}

void Form::settle() {
    if (!unload_wanted_) {
        closing_ = false;
        return Settled();
    }
    const std::weak_ptr<int> alive = depth_;
    escritorio_.later([this, alive] {
        if (!alive.expired() && unload_wanted_) dismiss();
    });
}

void Form::drop_file(const std::string& path) {
    if (engine_file(path)) return critico(engine_file_text(path));
    atender([&] { Form_FileDropped(path); });
}

void Form::close_by_user() {
    if (escritorio_.waiting_for(*this)) return void(dismiss());
    atender([this] { Form_QueryClose(); });
}

void Form::activate() {
    if (!closing_) atender([this] { Form_Activate(); });
}

Control* Form::find(std::string_view name) const {
    const auto it = std::find_if(controls_.begin(), controls_.end(),
                                 [&](const Control* c) { return igual_sin_caso(c->name(), name); });
    return it == controls_.end() ? nullptr : *it;
}

bool Form::leave_active() {
    Control& old = *active_;
    bool left = false;
    atender([&] {
        bool cancel = false;
        old.Validate(cancel);
        left = !cancel && old.on_leave();
    });
    return left;
}

bool Form::set_active(Control* control) {
    bool moved = false;
    atender([&] { moved = change_active(control); });
    return moved;
}

bool Form::change_active(Control* control) {
    if (control != nullptr && !control->can_focus()) return false;
    if (moving_focus_) { // a handler of the control that is being left names another goal
        goal_ = control;
        return true;
    }
    if (control == active_) return true;
    {
        const Flag moving(moving_focus_);
        goal_ = control;
        Control* const old = active_;
        if (old != nullptr) {
            if (!leave_active()) return false;
            if (goal_ == old) goal_ = control->can_focus() ? control : old;
            atender([old] { old->LostFocus(); });
        }
        if (goal_ != nullptr && !goal_->can_focus()) goal_ = nullptr;
        active_ = goal_;
    }
    if (active_ != nullptr) {
        Control* const now = active_;
        now->on_enter();
        atender([now] { now->GotFocus(); });
    }
    FocusMoved();
    return true;
}

bool Form::commit_active() {
    if (active_ == nullptr) return true;
    if (moving_focus_) return false;
    const Flag moving(moving_focus_);
    return leave_active();
}

bool Form::leave_for_command() {
    return active_ == nullptr || active_->stays_open_for_commands() || commit_active();
}

void Form::focus_next(bool backwards, bool enter) {
    // What leaving changes decides which control is the next one.
    if (active_ != nullptr && !moving_focus_ && !commit_active()) return;
    const auto n = controls_.size();
    const auto here = std::find(controls_.begin(), controls_.end(), active_);
    const std::size_t start = here == controls_.end() ? (backwards ? 0 : n - 1)
                                                      : static_cast<std::size_t>(here - controls_.begin());
    for (std::size_t step = 1; step <= n; ++step) {
        Control* const c = controls_[(start + (backwards ? n - step : step)) % n];
        if (!c->can_focus() || (enter && !c->enter_stop())) continue;
        set_active(c);
        return;
    }
}

void Form::send_key(KeyEvent& e) {
    if (e.keypad && e.key == Key::character && e.ch == U'.') e.ch = U',';
    atender([&] {
        if (active_ != nullptr && active_->can_focus()) active_->send_key(e);
        if (!e.handled && active_ == nullptr && (e.key == Key::tab || e.key == Key::backtab)) {
            e.handled = true;
            focus_next(e.key == Key::backtab);
        }
        const auto all = controls_;
        for (auto it = all.begin(); !e.handled && it != all.end(); ++it) (*it)->on_shortcut(e);
        if (!e.handled) Form_KeyDown(e);
    });
}

void Form::critico(const std::string& texto) { escritorio_.message(texto, Icon::critical, Buttons::ok); }

void Form::exclamacion(const std::string& texto) { escritorio_.message(texto, Icon::warning, Buttons::ok); }

void Form::informacion(const std::string& texto) {
    escritorio_.message(texto, Icon::information, Buttons::ok);
}

bool Form::pregunta(const std::string& texto) {
    return escritorio_.message(texto, Icon::question, Buttons::yes_no) == Answer::yes;
}

void Form::adopt(Control* control) { controls_.push_back(control); }

void Form::abandon(Control* control) {
    std::erase(controls_, control);
    if (active_ == control) active_ = nullptr;
    if (goal_ == control) goal_ = nullptr;
}

} // namespace quorvel::ui
