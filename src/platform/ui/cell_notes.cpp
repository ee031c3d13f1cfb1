#include "platform/ui/cell_notes.h"

namespace quorvel::ui {

const std::string& CellNotes::of(int column, const std::string& code) {
    static const std::string NONE;
    if (!source_ || code.empty()) return NONE;
    const auto known = known_.find({column, code});
    if (known != known_.end()) return known->second;
    wanted_.insert({column, code});
    return NONE;
}

void CellNotes::fetch() {
    const std::set<Cell> wanted = std::exchange(wanted_, {});
    for (const Cell& cell : wanted) known_[cell] = source_(cell.first, cell.second);
    if (!wanted.empty()) Fetched();
}

} // namespace quorvel::ui
