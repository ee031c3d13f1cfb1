#include "platform/ui/suggestions.h"

#include <algorithm>

namespace quorvel::ui {

bool has_letter(const std::string& text) {
    return std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) >= 'A'; });
}

void Suggestions::follow(int column, const std::string& typed) {
    if (!source_) return;
    std::vector<Suggestion> found = typed.size() < 2 ? std::vector<Suggestion>() : source_(column, typed);
    const bool missed = found.empty() && typed.size() >= 2 && has_letter(typed);
    if (found.empty() && rows_.empty() && missed == missed_) return;
    rows_ = std::move(found);
    missed_ = missed;
    current_ = !rows_.empty() && has_letter(typed) ? 0 : -1;
    Changed();
}

void Suggestions::close() {
    if (rows_.empty() && !missed_) return;
    rows_.clear();
    current_ = -1;
    missed_ = false;
    Changed();
}

void Suggestions::choose(int row) {
    row = std::clamp(row, -1, static_cast<int>(rows_.size()) - 1);
    if (row == current_) return;
    current_ = row;
    Changed();
}

const Suggestion* Suggestions::chosen() const {
    return current_ < 0 ? nullptr : &rows_[static_cast<std::size_t>(current_)];
}

bool Suggestions::key(const KeyEvent& e) {
    if ((rows_.empty() && !missed_) || e.ctrl || e.alt) return false;
    if (e.key == Key::escape) return close(), true;
    if (rows_.empty()) return false;
    switch (e.key) {
    case Key::down: return choose(current_ + 1), true;
    case Key::up: return choose(current_ - 1), true;
    case Key::page_down: return choose(static_cast<int>(rows_.size()) - 1), true;
    case Key::page_up: return choose(0), true;
    default: return false;
    }
}

} // namespace quorvel::ui
