#pragma once
#include "platform/ui/control.h"
#include "platform/ui/entry.h"
#include "text/fecha.h"

#include <optional>
#include <vector>

namespace quorvel::ui {

class TextBox : public Control {
public:
    using Control::Control;
    [[nodiscard]] std::string_view kind() const override { return "TextBox"; }
    [[nodiscard]] const std::string& Text() const { return text_; }
    /// Set from code: raises Change when the text differs, never LeftChanged. In a box that has the focus and
    /// has not been typed into it is selected, as on entry.
    void SetText(std::string text);
    /// The text of a view became this, by whatever way: what is new in it goes through the rules of the box.
    /// @return false when it was refused
    bool user_edit(const std::string& text);
    /// A whole text replaces what is selected, or comes at the end.
    bool paste(const std::string& text);
    /// The next typed character replaces the whole text.
    void SelectAll();
    [[nodiscard]] bool all_selected() const { return selected_; }
    [[nodiscard]] bool Locked() const { return locked_; }
    void SetLocked(bool locked);
    void SetUpperCase(bool upper) { upper_ = upper; } ///< typed letters become upper case
    [[nodiscard]] bool RightAligned() const { return right_; }
    void SetRightAligned(bool right) { right_ = right; }
    [[nodiscard]] const std::string& text_on_entry() const { return on_entry_; }
    /// Whether a key that changes the text without typing (Backspace, a control code) may do so.
    [[nodiscard]] bool takes_key(const KeyEvent& e);

    Event<> Change;           ///< after every change of the text
    Event<> AllSelected;      ///< a view selects its text
    Event<int&> KeyPress;     ///< setting the code to 0 discards the key
    Event<bool&> LeftChanged; ///< leaving with another text than on entry; true refuses to leave

protected:
    void on_key(KeyEvent& e) override;
    void on_enter() override;
    bool on_leave() override;
    /// Whether the kind of box takes this character at all.
    [[nodiscard]] virtual bool accepts(char32_t) const { return true; }
    /// What the kind of box makes of a text that comes as a whole.
    virtual void settle(Entry&) {}

private:
    void edit(std::string text);
    bool enter(Entry e);
    [[nodiscard]] char32_t filter(char32_t ch);
    std::string text_, on_entry_;
    bool edited_ = false, selected_ = false, locked_ = false, upper_ = false, right_ = false;
};

/// Text-entry control of the suite: a text and its numeric value.
class ctlEntrada : public TextBox {
public:
    using TextBox::TextBox;
    [[nodiscard]] std::string_view kind() const override { return "ctlEntrada"; }
    /// The text read as a displayed amount, 0 when empty.
    [[nodiscard]] double Value() const;
};

/// Date box of the suite, "dd/mm/yyyy". Short forms count: "5/3/24", "050324", and "5/3" or "0503" in the
/// clock's year.
class ctlCalendario : public TextBox {
public:
    using TextBox::TextBox;
    [[nodiscard]] std::string_view kind() const override { return "ctlCalendario"; }
    /// Nothing for an empty text or an impossible date.
    [[nodiscard]] std::optional<Fecha> date() const;
    void SetDate(std::optional<Fecha> f); ///< nothing empties the box
    /// Year, month, day as texts without zeros in front; empty without a date.
    [[nodiscard]] std::string Year() const;
    [[nodiscard]] std::string Month() const;
    [[nodiscard]] std::string Day() const;
    /// "mm/dd/yyyy", empty without a date.
    [[nodiscard]] std::string MonthDayYear() const;
    /// A text that is no date keeps the focus ("Fecha no válida"); off by default.
    void SetRefusesInvalid(bool refuses) { refuses_ = refuses; }
    /// Whose year a date without one is of; the machine's clock when none is set.
    void SetClock(const Reloj& clock) { clock_ = &clock; }

protected:
    bool on_leave() override; ///< completes short forms first
    [[nodiscard]] bool accepts(char32_t ch) const override;
    void settle(Entry& e) override;

private:
    [[nodiscard]] std::optional<Fecha> understand(const std::string& typed) const;
    const Reloj* clock_ = nullptr;
    bool refuses_ = false;
};

/// Common part of the lists: entries with an attached number.
class ListControl : public Control {
public:
    using Control::Control;
    void AddItem(std::string text, std::int64_t item_data = 0);
    void RemoveItem(int index);
    void Clear();
    [[nodiscard]] int ListCount() const { return static_cast<int>(items_.size()); }
    [[nodiscard]] const std::string& List(int index) const;
    [[nodiscard]] std::int64_t ItemData(int index) const;
    [[nodiscard]] int ListIndex() const { return index_; }
    /// Selects an entry (-1 none); an entry always raises Click, selected before or not.
    void SetListIndex(int index);
    /// The person picks an entry with the pointer. @return false when the list is off or the focused control
    /// refuses to be left
    bool choose(int index);
    /// The selected entry's text, empty when none is.
    [[nodiscard]] std::string Text() const;
    /// Selects the first entry with this text. @return false leaves the selection as it was.
    bool select_text(std::string_view text);
    Event<> Click;
    Event<> Chosen; ///< after Click, when it was picked with the pointer

protected:
    void on_key(KeyEvent& e) override; ///< arrows move; letters search code and name
    void on_enter() override { typed_.clear(); }

private:
    void type(char32_t ch);
    [[nodiscard]] int find_typed(int from) const;
    struct Item {
        std::string text;
        std::int64_t data;
    };
    std::vector<Item> items_;
    int index_ = -1;
    std::string typed_;
};
class ComboBox : public ListControl {
public:
    using ListControl::ListControl;
    [[nodiscard]] std::string_view kind() const override { return "ComboBox"; }
};
class ListBox : public ListControl {
public:
    using ListControl::ListControl;
    [[nodiscard]] std::string_view kind() const override { return "ListBox"; }
    Event<> DblClick;
    bool double_click(); ///< by the person, on the selected entry
};

/// Label, button, check box, option, menu entry: something with a caption.
class Captioned : public Control {
public:
    Captioned(Form& form, std::string name, std::string caption = {});
    [[nodiscard]] const std::string& Caption() const { return caption_; }
    void SetCaption(std::string caption);
    /// "ctrl+f5", as parse_key reads it; presses wherever the focus is.
    [[nodiscard]] const std::string& shortcut() const { return shortcut_; }
    void SetShortcut(std::string shortcut) { shortcut_ = std::move(shortcut); }
    /// A click by the person. @return false: off, or the focused control refuses to be left
    virtual bool press() { return false; }

protected:
    void on_shortcut(KeyEvent& e) override;

private:
    std::string caption_, shortcut_;
};
class Label : public Captioned {
public:
    using Captioned::Captioned;
    [[nodiscard]] std::string_view kind() const override { return "Label"; }
    [[nodiscard]] bool takes_focus() const override { return false; }
};
/// How a button treats the control that has the focus when it is pressed.
enum class Press {
    leaves,      ///< leaves it for the button; it may refuse
    commands,    ///< as a menu entry: takes a box's text and keeps a grid's edit open
    asks_nothing ///< gives up, or only helps to fill the form in: half a text may stay half
};
class CommandButton : public Captioned {
public:
    using Captioned::Captioned;
    [[nodiscard]] std::string_view kind() const override { return "CommandButton"; }
    void SetPress(Press p) { press_ = p; }
    /// Looks up what this box takes: pressed from there it asks nothing.
    void SetServes(const Control& box) { served_ = &box; }
    bool press() override;
    Event<> Click;

protected:
    void on_key(KeyEvent& e) override; ///< Enter and blank press

private:
    Press press_ = Press::leaves;
    const Control* served_ = nullptr;
};
class CheckBox : public Captioned {
public:
    using Captioned::Captioned;
    [[nodiscard]] std::string_view kind() const override { return "CheckBox"; }
    [[nodiscard]] int Value() const { return value_; }
    void SetValue(int value); ///< 0 or 1
    bool press() override;    ///< toggles
    Event<> Click;

protected:
    void on_key(KeyEvent& e) override;

private:
    int value_ = 0;
};
/// One of the options of a form; options with the same group exclude each other.
class OptionButton : public Captioned {
public:
    OptionButton(Form& form, std::string name, std::string caption, std::string group = {});
    [[nodiscard]] std::string_view kind() const override { return "OptionButton"; }
    [[nodiscard]] int Value() const { return value_; }
    void SetValue(int value);
    bool press() override;
    Event<> Click;

protected:
    void on_key(KeyEvent& e) override; ///< Space chooses this one, the arrows another of the group

private:
    [[nodiscard]] OptionButton& neighbour(int step);

    std::string group_;
    int value_ = 0;
};
class MenuItem : public Captioned {
public:
    /// @param parent nullptr for an entry of the menu bar
    MenuItem(Form& form, std::string name, std::string caption, MenuItem* parent = nullptr,
             std::string shortcut = {}, bool separator_before = false);
    [[nodiscard]] std::string_view kind() const override { return "MenuItem"; }
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] MenuItem* parent() const { return parent_; }
    [[nodiscard]] bool separator_before() const { return separator_; }
    bool press() override; ///< menus take no focus: an open edit stays open
    Event<> Click;

private:
    MenuItem* parent_;
    bool separator_;
};

} // namespace quorvel::ui
