#pragma once
#include <sys/types.h>

#include <compare>
#include <filesystem>
#include <optional>

namespace quorvel {

/// What tells a file from all others, whatever it is called.
struct FileId {
    dev_t device;
    ino_t inode;
    auto operator<=>(const FileId&) const = default;
};
/// @return nothing when there is no such file
[[nodiscard]] std::optional<FileId> file_id(const std::filesystem::path& file);

/// The embedded database engine tells which files it has open in this process: once for each time.
void engine_opened(FileId file);
void engine_closed(FileId file);

/// A file of a database that this process has open: its data, its log or what else the engine keeps beside
/// it, also under another name and also when it is not there yet. Nobody but the engine reads or writes it.
[[nodiscard]] bool engine_file(const std::filesystem::path& file);
/// What the person who chose it is told.
[[nodiscard]] std::string engine_file_text(const std::filesystem::path& file);
/// @throws std::runtime_error for a file of an open database
void refuse_engine_file(const std::filesystem::path& file);

} // namespace quorvel
