#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/utf8.h"

#include <algorithm>

namespace quorvel::ui {

void ctlPlanilla::on_key(KeyEvent& e) {
    SetHint("");
    if (e.key == Key::character && e.ctrl && !e.alt && (e.ch == U'z' || e.ch == U'Z')) {
        e.handled = true;
        e.shift ? redo() : undo();
        return;
    }
    if (editing_ && suggestions.key(e)) {
        e.handled = true;
        return;
    }
    const History::Recording step(history_);
    switch (e.key) {
    case Key::up:
    case Key::down:
    case Key::left:
    case Key::right:
    case Key::home:
    case Key::end:
    case Key::page_up:
    case Key::page_down: return on_move_key(e);
    case Key::enter:
    case Key::tab:
    case Key::backtab: return on_step_key(e);
    case Key::escape:
        e.handled = editing_ || pending_;
        if (editing_)
            cancel_edit();
        else if (pending_)
            cancel_pending_row();
        return;
    case Key::f2: // where there is no line to correct it is the form's key
        e.handled = !locked_ && (pending_ || !on_new_row());
        if (e.handled) begin_edit();
        return;
    default: return on_text_key(e);
    }
}

void ctlPlanilla::on_text_key(KeyEvent& e) {
    if (e.key == Key::del) {
        if (e.shift || e.alt) return;
        e.handled = true;
        if (e.ctrl)
            delete_row();
        else if (!editing_)
            clear_cell();
        return;
    }
    if (e.key == Key::character && !e.ctrl && !e.alt) {
        e.handled = true;
        type(e.ch);
        return;
    }
    e.handled = !takes_key(e);
    if (e.key != Key::backspace || e.handled) return;
    e.handled = true;
    if (!editing_) {
        begin_edit(false);
        return;
    }
    std::string rest = proposed_ ? std::string() : edit_;
    drop_last(rest);
    set_edit_text(rest);
    suggestions.follow(col_, edit_);
}

void ctlPlanilla::on_move_key(KeyEvent& e) {
    const bool vertical =
        e.key == Key::up || e.key == Key::down || e.key == Key::page_up || e.key == Key::page_down;
    e.handled = true;
    if (editing_ && !vertical) return; // these move the caret of the view's editor
    const int last_row = locked_ ? std::max(Rows() - 1, 0) : Rows() + (pending_ ? 1 : 0);
    int row = row_, col = col_;
    switch (e.key) {
    case Key::up: --row; break;
    case Key::down: ++row; break;
    case Key::page_up: row = std::max(row - 10, 0); break;
    case Key::page_down: row = std::min(row + 10, last_row); break;
    case Key::left: --col; break;
    case Key::right: ++col; break;
    case Key::home:
        col = 0;
        if (e.ctrl) row = 0;
        break;
    default:
        col = Cols() - 1;
        if (e.ctrl) row = last_row;
        break;
    }
    move_to(row, col);
}

void ctlPlanilla::on_step_key(KeyEvent& e) {
    if (e.alt || (e.ctrl && e.key == Key::enter)) return;
    const int row = row_, col = col_;
    e.handled = true;
    proposed_ = false; // what was proposed is accepted
    if (!take_suggestion()) return;
    if (e.ctrl) { // Ctrl+Tab leaves the grid from any cell
        e.handled = false;
        return;
    }
    if (row_ != row || col_ != col) return; // the column's own rule has moved on
    if (e.key == Key::backtab) {
        if (col > 0)
            move_to(row, col - 1);
        else if (row > 0)
            move_to(row - 1, Cols() - 1);
        else
            e.handled = false;
        return;
    }
    const bool enter = e.key == Key::enter;
    const int last = enter && enter_last_ >= 0 ? enter_last_ : Cols() - 1;
    if (col < last) {
        move_to(row, col + 1);
        return;
    }
    if (move_to(row + 1, enter ? enter_first_ : 0)) return;
    if (enter)
        move_to(row, enter_first_);
    else
        e.handled = false; // past the last cell Tab goes on to the next control
}

} // namespace quorvel::ui
