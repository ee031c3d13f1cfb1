#include "platform/ui/escritorio.h"

#include "platform/files/engine_files.h"
#include "platform/ui/form.h"

#include <algorithm>

namespace quorvel::ui {

std::optional<std::string> Escritorio::ask_file(const FileRequest& request) {
    auto file = choose_file(request);
    if (!file || !engine_file(*file)) return file;
    message(engine_file_text(*file), Icon::critical, Buttons::ok);
    return std::nullopt;
}

void Escritorio::open(Form& form, bool modal) {
    const bool was_top = top() == &form;
    std::erase(open_, &form);
    open_.push_back(&form);
    on_open(form, modal);
    if (!was_top) form.activate();
    if (modal && form.visible()) wait(form);
}

void Escritorio::close(Form& form) {
    const bool was_top = top() == &form;
    if (std::erase(open_, &form) == 0) return;
    on_close(form);
    if (was_top && top() != nullptr) top()->activate();
}

} // namespace quorvel::ui
