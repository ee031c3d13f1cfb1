#pragma once
#include "platform/ui/event.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace quorvel::ui {

/// What the codes of a grid are called, for a view to paint beside them. Painting only asks for what is
/// known: the database may be at work meanwhile. What is not known is fetched afterwards, once for each code.
class CellNotes {
public:
    using Source = std::function<std::string(int column, const std::string& code)>;
    void SetSource(Source source) { source_ = std::move(source); }
    [[nodiscard]] bool on() const { return source_ != nullptr; }
    /// Empty while it is not known.
    [[nodiscard]] const std::string& of(int column, const std::string& code);
    [[nodiscard]] bool wanted() const { return !wanted_.empty(); }
    /// Asks the source; what it throws leaves the rest for the next time.
    void fetch();
    /// Names may have changed.
    void forget() { known_.clear(); }

    Event<> Fetched;

private:
    using Cell = std::pair<int, std::string>;
    Source source_;
    std::map<Cell, std::string> known_;
    std::set<Cell> wanted_;
};

} // namespace quorvel::ui
