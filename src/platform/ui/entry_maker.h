#pragma once
#include <functional>
#include <optional>
#include <string>

namespace quorvel::ui {

class Form;

/// An entry of a master table.
struct MasterEntry {
    std::string code, name;
};
/// What a lookup did not find. @param group code of the group that the lookup shows
struct MissingEntry {
    std::string table, typed, group;
};

/// A desktop on which the host may let people make an entry that a lookup lacks.
class EntryMaker {
public:
    virtual ~EntryMaker() = default;
    /// Empty: the host does not. @return nothing when the person leaves it
    std::function<std::optional<MasterEntry>(Form& lookup, const MissingEntry& missing)> make_entry;
};

} // namespace quorvel::ui
