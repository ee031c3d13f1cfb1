#pragma once
#include <string>

namespace quorvel::ui {

/// A text on its way into a box or a cell: what it stands between, and what becomes of it. A form may change
/// all three texts, or refuse it after saying why.
struct Entry {
    std::string front{}, text{}, back{};
    bool typed = false;   ///< one character, as a key types it; else a whole text: pasted, dropped, composed
    bool refused = false; ///< nothing changes
    bool settled = false; ///< the form has applied its rules: none of the characters is asked about any more
    [[nodiscard]] std::string whole() const { return front + text + back; }
};

/// What has come in between two states of a view's text: whatever both do not have in front and behind.
[[nodiscard]] Entry entry_between(const std::string& before, const std::string& now);

} // namespace quorvel::ui
