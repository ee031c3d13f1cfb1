#include "platform/ui/ctlRegistro.h"

#include "platform/ui/form.h"

namespace quorvel::ui {

namespace {
template <class T> bool replace(T& old, T value) {
    if (old == value) return false;
    old = std::move(value);
    return true;
}
} // namespace

void ctlRegistro::SetCompany(std::string text) {
    if (replace(company_, std::move(text))) Changed();
}

void ctlRegistro::SetUser(std::string text) {
    if (replace(user_, std::move(text))) Changed();
}

void ctlRegistro::SetProgram(std::string text) {
    if (replace(program_, std::move(text))) Changed();
}

void ctlRegistro::SetPrinter(std::string text) {
    if (replace(printer_, std::move(text))) Changed();
}

void ctlRegistro::SetNotice(std::string text, bool done) {
    const bool other = replace(notice_done_, done);
    if (replace(notice_, std::move(text)) || other) Changed();
}

void ctlRegistro::SetFlag(int i, bool on) {
    if (replace(flags_.at(static_cast<std::size_t>(i)), on)) Changed();
}

void ctlRegistro::SetPrintEnabled(bool on) {
    if (replace(print_, on)) Changed();
}

void ctlRegistro::SetDeleteLineEnabled(bool on) {
    if (replace(delete_line_, on)) Changed();
}

void ctlRegistro::SetModifyEnabled(bool on) {
    if (replace(modify_, on)) Changed();
}

bool ctlRegistro::enabled(Function f) const {
    switch (f) {
    case Function::Save: return modify_;
    case Function::Print: return print_;
    case Function::DeleteLine: return delete_line_ && modify_;
    default: return true;
    }
}

void ctlRegistro::RecordShown() { Changed(); }

void ctlRegistro::NewRecord() {
    modify_ = true;
    Changed();
}

void ctlRegistro::RecordStored() { Changed(); }

bool ctlRegistro::press(Function f) {
    if (!Enabled() || !Visible() || !enabled(f) || !form().leave_for_command()) return false;
    const Event<>* const events[] = {&New, &Save, &DeleteLine, &Print, &Search, &Exit};
    form().atender([&] { (*events[static_cast<std::size_t>(f)])(); });
    return true;
}

} // namespace quorvel::ui
