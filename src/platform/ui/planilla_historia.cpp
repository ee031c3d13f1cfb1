// What has been done to the cells and rows, taken back and done again.
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/form.h"

#include <algorithm>
#include <utility>

namespace quorvel::ui {

/// @return what takes it back
History::Change ctlPlanilla::revert(History::Change change) {
    const auto at = rows_.begin() + change.row;
    switch (change.kind) {
    case History::Change::cell:
        std::swap(at->at(static_cast<std::size_t>(change.col)), change.texts[0]);
        break;
    case History::Change::inserted:
        change = {History::Change::removed, change.row, change.col, std::move(*at)};
        rows_.erase(at);
        break;
    case History::Change::removed:
        rows_.insert(at, std::move(change.texts));
        change = {History::Change::inserted, change.row, change.col, {}};
        break;
    }
    return change;
}

bool ctlPlanilla::replay(std::vector<History::Step>& from, std::vector<History::Step>& to) {
    if (locked_ || !Enabled() || committing_ || opening_ || from.empty()) return false;
    History::Step step = std::move(from.back()), back;
    from.pop_back();
    drop_pending();
    const int last_row = row_, last_col = col_;
    row_ = std::min(step.front().row, Rows());
    if (step.front().kind == History::Change::cell) col_ = step.front().col;
    for (; !step.empty(); step.pop_back()) back.push_back(revert(std::move(step.back())));
    row_ = std::min(row_, Rows());
    to.push_back(std::move(back));
    Reset();
    form().atender([&] {
        RowsChanged();
        RowColChange(last_row, last_col);
    });
    return true;
}

void ctlPlanilla::one_step(const std::function<void()>& work) {
    const History::Recording step(history_);
    work();
}

bool ctlPlanilla::undo() {
    if (editing_ || pending_) {
        editing_ ? cancel_edit() : cancel_pending_row();
        return true;
    }
    return replay(history_.done, history_.undone);
}

bool ctlPlanilla::redo() { return !editing_ && !pending_ && replay(history_.undone, history_.done); }

} // namespace quorvel::ui
