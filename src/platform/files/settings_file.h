#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace quorvel {

/// The settings file of a program's folder, "nivo.ini". File, section and key are found without regard to
/// case; of several such files one is read and written.
class SettingsFile {
public:
    explicit SettingsFile(const std::filesystem::path& folder);
    /// The value without blanks around it and without one pair of double quotes; empty when there is none.
    [[nodiscard]] std::string get(std::string_view section, std::string_view key) const;
    /// Writes the one key; every other line stays as it is, line ends included. @return false when the file
    /// cannot be read or written, it is unchanged then
    bool set(std::string_view section, std::string_view key, std::string_view value) const;
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace quorvel
