#pragma once
#include "platform/ui/control.h"

#include <array>

namespace quorvel::ui {

/// Record toolbar of the suite: New, Save, Delete line, Print, Search, Exit; who works in which company.
/// Its buttons take no focus, so an open grid edit stays open; a text box is left first.
class ctlRegistro : public Control {
public:
    enum class Function { New, Save, DeleteLine, Print, Search, Exit };
    using Control::Control;
    [[nodiscard]] std::string_view kind() const override { return "ctlRegistro"; }
    [[nodiscard]] bool takes_focus() const override { return false; }

    [[nodiscard]] const std::string& Company() const { return company_; }
    void SetCompany(std::string text);
    [[nodiscard]] const std::string& User() const { return user_; }
    void SetUser(std::string text);
    [[nodiscard]] const std::string& Program() const { return program_; }
    void SetProgram(std::string text);
    [[nodiscard]] const std::string& Printer() const { return printer_; }
    void SetPrinter(std::string text);
    [[nodiscard]] bool Flag(int i) const { return flags_.at(static_cast<std::size_t>(i)); } ///< 0 to 4
    void SetFlag(int i, bool on);
    [[nodiscard]] bool PrintEnabled() const { return print_; }
    void SetPrintEnabled(bool on);
    [[nodiscard]] bool DeleteLineEnabled() const { return delete_line_; }
    void SetDeleteLineEnabled(bool on);
    [[nodiscard]] bool ModifyEnabled() const { return modify_; }
    void SetModifyEnabled(bool on);
    /// What a person should know about what is on the screen; empty for nothing.
    [[nodiscard]] const std::string& Notice() const { return notice_; }
    /// @param done it tells of something that went well
    void SetNotice(std::string text, bool done = false);
    [[nodiscard]] bool NoticeDone() const { return notice_done_; }
    /// Save needs modify, Print print, DeleteLine both delete line and modify; the others are always on.
    [[nodiscard]] bool enabled(Function f) const;

    void RecordShown();  ///< a saved voucher is on the screen
    void NewRecord();    ///< a new voucher is on the screen; modify is on
    void RecordStored(); ///< the new voucher has been saved

    /// The person presses a function. @return false when it is off or the focused control refuses to be left.
    bool press(Function f);
    Event<> New, Save, DeleteLine, Print, Search, Exit;

private:
    std::string company_, user_, program_, printer_, notice_;
    std::array<bool, 5> flags_{};
    bool notice_done_ = false;
    bool print_ = true, delete_line_ = true, modify_ = true;
};

} // namespace quorvel::ui
