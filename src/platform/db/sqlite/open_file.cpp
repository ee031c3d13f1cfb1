#include "platform/db/sqlite/open_file.h"

#include "platform/files/engine_files.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <map>
#include <mutex>

namespace quorvel {
namespace {

// where the engine's file formats put the first lock on data and on the log's index
constexpr off_t PENDING_BYTE = 0x40000000, INDEX_IN_USE = 128;

/// With this lock the engine begins: it has none on the file yet, neither its old kind nor ours.
bool begins(const struct flock& lock) {
    return (lock.l_start == PENDING_BYTE && lock.l_type == F_RDLCK) || lock.l_start == INDEX_IN_USE;
}

/// The engine counts its connections to a file and locks by whichever has a reason to. One open file
/// description for them all makes what one descriptor locked the other's to unlock.
class LockKeepers {
public:
    void opened(int fd) {
        struct stat there {};
        if (::fstat(fd, &there) != 0) return;
        const FileId file{there.st_dev, there.st_ino};
        const std::lock_guard guard(mutex_);
        files_[fd] = file;
        ++keepers_[file].descriptors;
        engine_opened(file);
    }
    void closing(int fd) {
        const std::lock_guard guard(mutex_);
        const auto at = files_.find(fd);
        if (at == files_.end()) return;
        const FileId file = at->second;
        files_.erase(at);
        engine_closed(file);
        Keeper& keeper = keepers_[file];
        if (--keeper.descriptors > 0) return;
        if (keeper.fd >= 0) ::close(keeper.fd);
        keepers_.erase(file);
    }
    /// The descriptor that holds the file's locks; -1 while they are of the kind that the process holds.
    int keeper(int fd, bool begins) {
        const std::lock_guard guard(mutex_);
        const auto at = files_.find(fd);
        if (at == files_.end()) return -1;
        Keeper& keeper = keepers_[at->second];
        if (keeper.fd < 0 && begins) keeper.fd = ::fcntl(fd, F_DUPFD_CLOEXEC, 3);
        return keeper.fd;
    }
    void give_up(int fd) {
        const std::lock_guard guard(mutex_);
        Keeper& keeper = keepers_[files_[fd]];
        ::close(keeper.fd);
        keeper.fd = -1;
    }

private:
    struct Keeper {
        int descriptors = 0, fd = -1;
    };
    std::mutex mutex_;
    std::map<int, FileId> files_;
    std::map<FileId, Keeper> keepers_;
};

LockKeepers& keepers() {
    static auto& all = *new LockKeepers; // the last session may close after everything static is gone
    return all;
}

int open_noted(const char* path, int flags, int mode) {
    const int fd = ::open(path, flags, mode);
    if (fd >= 0) keepers().opened(fd);
    return fd;
}

int close_noted(int fd) {
    keepers().closing(fd); // before: the number may be another file's at once
    return ::close(fd);
}

/// The same command for locks of an open file description; 0 for what is no lock.
int kept(int command) {
    switch (command) {
    case F_GETLK: return F_OFD_GETLK;
    case F_SETLK: return F_OFD_SETLK;
    case F_SETLKW: return F_OFD_SETLKW;
    default: return 0;
    }
}

int lock_kept(int fd, int command, struct flock* lock) {
    const int keeper = keepers().keeper(fd, command != F_GETLK && begins(*lock));
    if (keeper < 0) return ::fcntl(fd, command, lock);
    lock->l_pid = 0;
    const int done = ::fcntl(keeper, kept(command), lock);
    if (done == 0 || errno != EINVAL) return done;
    keepers().give_up(fd); // a file system that does not know them
    return ::fcntl(fd, command, lock);
}

int fcntl_kept(int fd, int command, ...) {
    va_list rest;
    va_start(rest, command);
    const int done = kept(command) != 0 ? lock_kept(fd, command, va_arg(rest, struct flock*))
                                        : ::fcntl(fd, command, va_arg(rest, int));
    va_end(rest);
    return done;
}

bool keep_locks() {
    const auto replace = [vfs = sqlite3_vfs_find(nullptr)](const char* name, auto* function) {
        if (vfs->iVersion >= 3)
            vfs->xSetSystemCall(vfs, name, reinterpret_cast<sqlite3_syscall_ptr>(function));
    };
    replace("open", open_noted);
    replace("close", close_noted);
    replace("fcntl", fcntl_kept);
    return true;
}

} // namespace

int open_file(const std::string& path, int flags, sqlite3** db) {
    static const bool kept = keep_locks();
    (void)kept;
    return sqlite3_open_v2(path.c_str(), db, flags, nullptr);
}

} // namespace quorvel
