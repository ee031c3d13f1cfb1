#include "platform/ui/history.h"

#include <utility>

namespace quorvel::ui {

namespace {
constexpr std::size_t MOST = 200; // nobody goes back further key by key
}

void History::note(Change change) {
    if (recording()) open_.push_back(std::move(change));
}

void History::clear() {
    done.clear();
    undone.clear();
    open_.clear();
}

void History::finish() {
    if (open_.empty()) return;
    done.push_back(std::exchange(open_, {}));
    undone.clear();
    if (done.size() > MOST) done.erase(done.begin());
}

} // namespace quorvel::ui
