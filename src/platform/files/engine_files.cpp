#include "platform/files/engine_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <mutex>
#include <set>
#include <stdexcept>
#include <string>

namespace quorvel {
namespace {

struct OpenFiles {
    std::mutex mutex;
    std::multiset<FileId> files;
};

OpenFiles& open_files() {
    static auto& all = *new OpenFiles; // the last session may close after everything static is gone
    return all;
}

bool open(const std::string& file) {
    const auto id = file_id(file);
    const std::lock_guard guard(open_files().mutex);
    return id && open_files().files.contains(*id);
}

} // namespace

std::optional<FileId> file_id(const std::filesystem::path& file) {
    // its times are not asked for: where they were read, the next write to the file has to store them anew
    struct statx there {};
    if (::statx(AT_FDCWD, file.c_str(), 0, STATX_INO, &there) != 0) return std::nullopt;
    return FileId{makedev(there.stx_dev_major, there.stx_dev_minor), there.stx_ino};
}

void engine_opened(FileId file) {
    const std::lock_guard guard(open_files().mutex);
    open_files().files.insert(file);
}

void engine_closed(FileId file) {
    const std::lock_guard guard(open_files().mutex);
    auto& files = open_files().files;
    if (const auto one = files.find(file); one != files.end()) files.erase(one);
}

bool engine_file(const std::filesystem::path& file) {
    const std::string name = file.string();
    if (open(name)) return true;
    for (const std::string_view tail : {"-wal", "-shm", "-journal"})
        if (name.ends_with(tail) && open(name.substr(0, name.size() - tail.size()))) return true;
    return false;
}

std::string engine_file_text(const std::filesystem::path& file) {
    return "El archivo " + file.string() + " es de la base de datos que está abierta: elija otro";
}

void refuse_engine_file(const std::filesystem::path& file) {
    if (engine_file(file)) throw std::runtime_error(engine_file_text(file));
}

} // namespace quorvel
