#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// Base folder of the attachments. @param setting value of the key "base"; its separator at the end does not
/// count, empty is the program's folder, a relative one starts there
[[nodiscard]] std::filesystem::path attachment_base(std::string_view setting,
                                                    const std::filesystem::path& program_folder);
/// The same as the settings file of the program's folder says.
[[nodiscard]] std::filesystem::path attachment_base(const std::filesystem::path& program_folder);
/// Folder name of a database from its session's name: file name or server database alone, upper case, without
/// ".MDB". Never holds a host or a password.
[[nodiscard]] std::string attachment_database(std::string_view session_name);
/// A file name without folders, which cannot lead out of its own and can be stored as a text.
[[nodiscard]] bool bare_name(std::string_view name);

/// Whether a text can name a set: its number.
[[nodiscard]] bool attachment_set(std::string_view name);

/// Where a file is attached and how it is called there.
struct AttachedFile {
    std::string set, name;
};

/// The attached files of one database: base/adjunto/DATABASE/set/name. The layout without the database level
/// is still read. Nothing here throws; what fails changes nothing.
class Attachments {
public:
    Attachments(std::filesystem::path base, std::string database)
        : root_(std::move(base) / "adjunto"), database_(std::move(database)) {}
    /// Copies a file into the set, over a file of the same name. @return its bare name
    [[nodiscard]] std::optional<std::string> add(const std::string& set,
                                                 const std::filesystem::path& source) const;
    /// The set has a file of that name with other contents.
    [[nodiscard]] bool would_replace(const std::string& set, const std::filesystem::path& source) const;
    /// Deletes the file of the current layout, and with the last one its folder, which somebody else may then
    /// claim. @return false when there is none or it stays
    bool remove(const std::string& set, const std::string& name) const;
    /// Where the file is, the current layout first.
    [[nodiscard]] std::optional<std::filesystem::path> find(const std::string& set,
                                                            const std::string& name) const;
    [[nodiscard]] bool save_copy(const std::string& set, const std::string& name,
                                 const std::filesystem::path& target) const;
    /// Copies the named files, also of the older layout, into a set whose folder does not exist yet; files
    /// that are missing stay missing. @return false: nothing was copied
    [[nodiscard]] bool copy_set(const std::string& from, const std::string& to,
                                const std::vector<std::string>& names) const;
    /// The first set from this one on that has no folder yet: a folder left behind is nobody's new set.
    [[nodiscard]] std::string first_free(const std::string& set) const;
    /// Makes the set's folder. Whoever makes it owns it: a set's number alone keeps nobody else out.
    /// @return false when it cannot be made or somebody has made it already
    [[nodiscard]] bool make(const std::string& set) const;
    /// The same with the first free number from this one on. Nothing where no folder can be made.
    [[nodiscard]] std::optional<std::string> claim(const std::string& set) const;
    /// Every file of the current layout. What comes or goes meanwhile may be in it or not.
    [[nodiscard]] std::vector<AttachedFile> files() const;
    /// The folder of the database's sets.
    [[nodiscard]] std::filesystem::path home() const { return root_ / database_; }

private:
    /// Folder of a set; empty for a set that is no number.
    [[nodiscard]] std::filesystem::path folder(const std::string& set) const;
    [[nodiscard]] std::filesystem::path file(const std::string& set, const std::string& name) const;
    std::filesystem::path root_;
    std::string database_;
};

} // namespace quorvel
