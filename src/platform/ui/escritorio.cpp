#include "platform/ui/escritorio.h"

#include "platform/files/engine_files.h"
#include "platform/ui/form.h"

#include <algorithm>

namespace quorvel::ui {

/// One wait from its begin to its end. What a form asks that is being closed is called off from the start.
class Escritorio::Waiting {
public:
    Waiting(Escritorio& e, Form* modal) : e_(e) {
        Form* const owner = e.acting();
        e.waits_.push_back({owner, modal, e.acting_.size(), {}, owner != nullptr && owner->closing()});
    }
    ~Waiting() { e_.waits_.pop_back(); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    [[nodiscard]] bool off() const { return e_.waits_.back().off; }

private:
    Escritorio& e_;
};

Escritorio::Escritorio() = default;

Escritorio::~Escritorio() { open_.clear(); } // what is still kept has no window any more

Answer Escritorio::message(const std::string& text, Icon icon, Buttons buttons, const std::string& title) {
    const Waiting wait(*this, nullptr);
    if (wait.off()) return buttons == Buttons::ok ? Answer::ok : Answer::no;
    return on_message(text, icon, buttons, title);
}

std::optional<std::string> Escritorio::ask_file(const FileRequest& request) {
    std::optional<std::string> file;
    {
        const Waiting wait(*this, nullptr);
        if (!wait.off()) file = on_ask_file(request);
    }
    if (!file || !engine_file(*file)) return file;
    message(engine_file_text(*file), Icon::critical, Buttons::ok);
    return std::nullopt;
}

std::vector<std::string> Escritorio::ask_files(const FileRequest& request) {
    std::vector<std::string> files;
    {
        const Waiting wait(*this, nullptr);
        if (!wait.off()) files = on_ask_files(request);
    }
    const auto engines = std::ranges::find_if(files, [](const std::string& f) { return engine_file(f); });
    if (engines == files.end()) return files;
    message(engine_file_text(*engines), Icon::critical, Buttons::ok);
    return {};
}

std::vector<std::string> Escritorio::on_ask_files(const FileRequest& request) {
    auto file = on_ask_file(request);
    return file ? std::vector{std::move(*file)} : std::vector<std::string>{};
}

bool Escritorio::progress(const std::string& what, long done, long total) {
    const Waiting wait(*this, nullptr);
    return !wait.off() && on_progress(what, done, total) && !wait.off();
}

void Escritorio::open(Form& form, bool modal) {
    if (!modal) return put_on_top(form, false);
    const Waiting waiting(*this, &form);
    if (waiting.off()) return form.Hide();
    put_on_top(form, true);
    if (form.visible()) wait(form);
}

void Escritorio::put_on_top(Form& form, bool modal) {
    const bool was_top = top() == &form;
    std::erase(open_, &form);
    open_.push_back(&form);
    on_open(form, modal);
    if (!was_top) form.activate();
}

void Escritorio::close(Form& form) {
    const bool was_top = top() == &form;
    if (std::erase(open_, &form) == 0) return;
    on_close(form);
    if (was_top && top() != nullptr) top()->activate();
}

void Escritorio::bring_to_top(Form& form) {
    const auto it = std::find(open_.begin(), open_.end(), &form);
    if (it == open_.end() || top() == &form || waiting()) return;
    std::rotate(it, it + 1, open_.end());
    form.activate();
}

bool Escritorio::waiting_for(const Form& form) const {
    const auto first =
        static_cast<std::size_t>(std::find(acting_.begin(), acting_.end(), &form) - acting_.begin());
    return std::any_of(waits_.begin(), waits_.end(), [&](const Wait& w) { return w.depth > first; });
}

void Escritorio::call_off(Form& form) {
    for (std::size_t i = waits_.size(); i-- > 0;) {
        Wait& wait = waits_[i];
        if (wait.owner != &form || wait.off) continue;
        wait.off = true;
        if (wait.modal != nullptr)
            wait.modal->call_off();
        else if (const auto end = wait.end)
            end();
    }
}

void Escritorio::forget(Form& form) {
    std::replace(acting_.begin(), acting_.end(), &form, static_cast<Form*>(nullptr));
    for (Wait& wait : waits_) {
        if (wait.owner == &form) wait.owner = nullptr;
        if (wait.modal == &form) wait.modal = nullptr;
    }
}

void Escritorio::keep(std::unique_ptr<Form> form) {
    std::erase_if(kept_, [](const auto& kept) { return !kept->in_use() && !kept->loaded(); });
    kept_.push_back(std::move(form));
}

} // namespace quorvel::ui
