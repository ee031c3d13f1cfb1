#pragma once
#include "platform/ui/event.h"
#include "platform/ui/keys.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::ui {

class Form;

/// Something that a control offers besides its own event: an entry of its context menu with a key of its own.
struct Command {
    std::string caption, shortcut; ///< "ctrl+f5", as parse_key reads it
    std::function<void()> run;
};

/// A named part of a form: state and events, no drawing. Registers itself with its form; the order of
/// registration is the tab order.
class Control {
public:
    Control(Form& form, std::string name);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    /// "TextBox", "ComboBox", … as the driver reports it.
    [[nodiscard]] virtual std::string_view kind() const = 0;
    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] Form& form() const { return form_; }
    [[nodiscard]] bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);
    [[nodiscard]] bool Visible() const { return visible_; }
    void SetVisible(bool visible);
    /// Why a control is off, or what it does; shown when the pointer rests on it.
    [[nodiscard]] const std::string& ToolTip() const { return tooltip_; }
    void SetToolTip(std::string text);
    /// The key works wherever the focus is on the form.
    void AddCommand(Command command) { commands_.push_back(std::move(command)); }
    [[nodiscard]] const std::vector<Command>& commands() const { return commands_; }
    [[nodiscard]] virtual bool takes_focus() const { return true; }
    /// Enter passes over a control that nearly always stays as it is; Tab visits every one.
    [[nodiscard]] bool enter_stop() const { return enter_stop_; }
    void SetEnterStop(bool stop) { enter_stop_ = stop; }
    /// Menus and the toolbar act while this keeps its open edit, instead of leaving it first.
    [[nodiscard]] virtual bool stays_open_for_commands() const { return false; }
    [[nodiscard]] bool can_focus() const { return takes_focus() && enabled_ && visible_; }
    [[nodiscard]] bool has_focus() const;
    /// Goes through the form's focus door. @return false when the focused control refused to be left.
    bool SetFocus();
    /// One key while the control has the focus; raises KeyDown first. Tab and Enter that nobody handles move
    /// on.
    void send_key(KeyEvent& e);

    Event<> Changed; ///< anything that a view shows
    Event<> GotFocus, LostFocus;
    Event<bool&> Validate;    ///< before the focus leaves; true refuses
    Event<KeyEvent&> KeyDown; ///< before the control's own handling

protected:
    friend class Form;
    virtual void on_key(KeyEvent&) {}
    /// A key that the focused control did not handle: runs what this control has under it.
    virtual void on_shortcut(KeyEvent& e);
    virtual void on_enter() {}
    /// @return false keeps the focus here
    virtual bool on_leave() { return true; }

private:
    Form& form_;
    std::string name_, tooltip_;
    std::vector<Command> commands_;
    bool enabled_ = true, visible_ = true, enter_stop_ = true;
};

} // namespace quorvel::ui
