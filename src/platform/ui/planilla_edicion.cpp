#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/flag.h"
#include "platform/ui/form.h"
#include "platform/ui/utf8.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>

namespace quorvel::ui {

namespace {

constexpr const char* ZERO = "0";

/// Text in the form in which its column shows numbers.
std::string in_format(const std::string& text, const std::string& pattern) {
    if (pattern.empty() || text.empty() || !numero_sql(text)) return text;
    return Decimal::leer(text).formato(pattern);
}

} // namespace

void ctlPlanilla::close_edit() {
    if (!editing_) return;
    editing_ = proposed_ = refused_ = false;
    edit_.clear();
    suggestions.close();
    EditChanged();
}

bool ctlPlanilla::begin_edit(bool keep) {
    bool open = false;
    form().atender([&] { open = start_edit(keep); });
    return open;
}

bool ctlPlanilla::start_edit(bool keep) {
    if (editing_) return true;
    if (locked_ || !Enabled() || Cols() == 0 || committing_ || opening_) return false;
    const bool was_pending = pending_;
    if (on_new_row()) open_pending();
    const int row = row_, col = col_;
    bool cancel = false;
    {
        const Flag opening(opening_);
        BeforeColEdit(col, cancel);
    }
    if (cancel || row_ != row || col_ != col) {
        if (!was_pending && pending_ && !entered_) {
            drop_pending();
            Reset();
        }
        return false;
    }
    old_text_ = stored(row, col);
    edit_ = keep ? old_text_ : std::string();
    edit_row_ = row;
    edit_col_ = col;
    editing_ = true;
    EditChanged();
    return true;
}

bool ctlPlanilla::propose(const std::string& text) {
    if (!commit_edit() || !begin_edit(false)) return false;
    set_edit_text(text);
    proposed_ = true;
    EditChanged();
    return true;
}

void ctlPlanilla::set_edit_text(std::string text) {
    if (!editing_ || text == edit_) return;
    edit_ = sin_controles(text);
    proposed_ = refused_ = false;
    EditChanged();
}

/// What the rules leave of a text. @return false when it does not come in
bool ctlPlanilla::admit(Entry& e) {
    TextEntering(e);
    if (e.refused || e.settled) return !e.refused;
    std::string kept;
    for (const char32_t ch : code_points(sin_controles(e.text))) {
        int code = static_cast<int>(ch);
        if (code >= 32) KeyPress(code);
        if (code >= 32) kept += utf8(static_cast<char32_t>(code));
    }
    e.text = kept;
    return !kept.empty();
}

/// The one door of what a person enters into a cell.
bool ctlPlanilla::enter(Entry e) {
    if (locked_ || !Enabled()) return false;
    bool admitted = false;
    form().atender([&] { admitted = admit(e); });
    if (!admitted || !begin_edit(editing_)) return false;
    set_edit_text(e.whole());
    suggestions.follow(col_, edit_);
    return true;
}

bool ctlPlanilla::take_suggestion() {
    if (const Suggestion* chosen = editing_ ? suggestions.chosen() : nullptr)
        edit_ = Suggestion(*chosen).code;
    suggestions.close();
    return commit_edit();
}

bool ctlPlanilla::user_edit(const std::string& text) {
    if (!editing_ || text == edit_) return editing_;
    const Entry e = entry_between(edit_, text);
    if (e.text.empty()) { // something was taken out
        set_edit_text(text);
        suggestions.follow(col_, edit_);
        return true;
    }
    const bool came_in = enter(e);
    if (!came_in) EditChanged();
    return came_in;
}

bool ctlPlanilla::type(char32_t ch) {
    return enter({editing_ && !proposed_ ? edit_ : std::string(), utf8(ch), {}, true});
}

bool ctlPlanilla::takes_key(const KeyEvent& e) {
    int code = key_ascii(e);
    if (code == 0) return true;
    KeyPress(code);
    return code != 0;
}

void ctlPlanilla::SetHint(std::string text) {
    if (text.empty() && hint_.empty()) return;
    hint_ = std::move(text);
    Hinted();
}

bool ctlPlanilla::commit_edit() {
    const History::Recording step(history_);
    bool done = false;
    form().atender([&] { done = finish_edit(); });
    return done;
}

bool ctlPlanilla::finish_edit() {
    if (!editing_) return true;
    if (committing_) return false; // a message of the handlers moved the focus
    if (proposed_) {
        close_edit();
        return true;
    }
    const int row = edit_row_, col = edit_col_;
    {
        const Flag committing(committing_);
        edit_ = in_format(edit_, Columns(col).NumberFormat);
        if (edit_ == old_text_ ||
            (edit_.empty() && old_text_ == ZERO && !Columns(col).NumberFormat.empty())) {
            close_edit();
            return true;
        }
        bool cancel = false;
        const std::string old = old_text_;
        BeforeColUpdate(col, old, cancel);
        if (!editing_) return true; // the handlers replaced the rows
        if (cancel) {
            refused_ = true;
            set_current(edit_row_, edit_col_);
            EditChanged();
            return false;
        }
    }
    const std::string text = edit_;
    editing_ = refused_ = false;
    suggestions.close();
    store(row, col, text);
    EditChanged();
    AfterColUpdate(col);
    return true;
}

bool ctlPlanilla::on_leave() {
    const History::Recording step(history_);
    return finish_edit();
}

void ctlPlanilla::cancel_edit() { close_edit(); }

void ctlPlanilla::cancel_pending_row() {
    close_edit();
    if (!pending_) return;
    drop_pending();
    Reset();
    form().atender([this] { RowsChanged(); });
}

void ctlPlanilla::set_current(int row, int col) {
    if (row == row_ && col == col_) return;
    const int last_row = row_, last_col = col_;
    row_ = row;
    col_ = col;
    SetHint("");
    RowPainted(last_row);
    if (row != last_row) RowPainted(row);
    RowColChange(last_row, last_col);
}

void ctlPlanilla::SetRow(int row) {
    if (row < 0 || row == row_) return;
    if (!committing_) close_edit();
    settle_pending();
    if (row <= Rows()) set_current(row, col_);
}

void ctlPlanilla::SetCol(int col) {
    if (col < 0 || col == col_ || (col >= Cols() && Cols() > 0)) return;
    if (!committing_) close_edit();
    set_current(row_, col);
}

bool ctlPlanilla::move_to(int row, int col) {
    const History::Recording step(history_);
    bool moved = false;
    form().atender([&] { moved = go(row, col); });
    return moved;
}

bool ctlPlanilla::go(int row, int col) {
    if (committing_ || opening_) return false;
    const auto inside = [&](int r) {
        const int last = locked_ ? std::max(Rows() - 1, 0) : Rows() + (pending_ ? 1 : 0);
        return r >= 0 && r <= last && col >= 0 && col < Cols();
    };
    if (!inside(row)) return false;
    if (being_edited(row, col)) return true;
    if (!finish_edit()) return false;
    if (!inside(row)) return false;
    if (row != row_) {
        settle_pending(); // an emptied row goes away, and with it the place below it
        row = std::min(row, Rows());
    }
    set_current(row, col);
    return true;
}

bool ctlPlanilla::delete_row() {
    const History::Recording step(history_);
    bool done = false;
    form().atender([&] { done = remove_current(); });
    return done;
}

bool ctlPlanilla::remove_current() {
    if (locked_ || !Enabled() || committing_ || opening_) return false;
    if (on_new_row()) {
        if (!pending_) return false;
        cancel_pending_row();
        return true;
    }
    close_edit();
    bool cancel = false;
    BeforeDelete(cancel);
    if (cancel || on_new_row()) return false;
    RemoveRow(row_);
    return true;
}

void ctlPlanilla::press_button(int row, int col) {
    if (!can_focus() || col < 0 || col >= Cols() || !Columns(col).Button || !SetFocus()) return;
    if (!move_to(row, col)) return;
    const History::Recording step(history_);
    form().atender([&] { ButtonClick(col); });
}

void ctlPlanilla::paste(const std::string& text) {
    if (locked_ || !Enabled()) return;
    const History::Recording step(history_);
    std::string plain = reemplazar(text, "\r\n", "\n");
    while (plain.ends_with('\n')) plain.pop_back();
    if (!editing_ && plain.find_first_of("\t\n") != std::string::npos) return paste_block(plain);
    (void)enter({editing_ && !proposed_ ? edit_ : std::string(), plain});
}

void ctlPlanilla::paste_block(const std::string& text) {
    const int first_row = row_, first_col = col_;
    int line = 0;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + 1, ++line) {
        end = text.find('\n', begin);
        const std::string cells = text.substr(begin, end == std::string::npos ? end : end - begin);
        std::size_t from = 0;
        int col = first_col;
        for (std::size_t tab = 0; tab != std::string::npos && col < Cols(); from = tab + 1, ++col) {
            tab = cells.find('\t', from);
            const std::string cell = cells.substr(from, tab == std::string::npos ? tab : tab - from);
            if (!move_to(first_row + line, col)) return;
            if (cell.empty())
                clear_cell();
            else if (!enter({{}, cell}))
                return;
            if (!commit_edit()) return;
        }
    }
}

void ctlPlanilla::clear_cell() {
    if (locked_ || editing_ || stored(row_, col_).empty()) return;
    SetHint("");
    if (begin_edit(false)) commit_edit();
}

} // namespace quorvel::ui
