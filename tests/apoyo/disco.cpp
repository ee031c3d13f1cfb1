#include "apoyo/disco.h"

#include "apoyo/sesiones.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace quorvel::apoyo {

ArchivosCortos::ArchivosCortos(unsigned long bytes) {
    getrlimit(RLIMIT_FSIZE, &antes_);
    senal_ = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit poco{bytes, antes_.rlim_max};
    if (setrlimit(RLIMIT_FSIZE, &poco) != 0) throw std::runtime_error("setrlimit");
}

ArchivosCortos::~ArchivosCortos() {
    setrlimit(RLIMIT_FSIZE, &antes_);
    std::signal(SIGXFSZ, senal_);
}

Cualquiera::Cualquiera() : antes_(geteuid()) {
    constexpr uid_t NOBODY = 65534;
    if (antes_ == 0 && seteuid(NOBODY) != 0) throw std::runtime_error("seteuid");
}
Cualquiera::~Cualquiera() {
    if (antes_ == 0) (void)!seteuid(antes_);
}

DiscoChico::DiscoChico() : ruta_(carpeta_nueva()) {
    // in a view of its own, so that nothing stays mounted when the test is killed
    if (unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
        mount("quorvel", ruta_.c_str(), "tmpfs", MS_NOSUID | MS_NODEV, "size=4m") == 0)
        return;
    motivo_ = "a small disk cannot be mounted here: " + std::string(std::strerror(errno));
    ruta_.clear();
}
DiscoChico::~DiscoChico() {
    if (!ruta_.empty()) umount2(ruta_.c_str(), MNT_DETACH);
}

void DiscoChico::llenar() const {
    const int fd = open((ruta_ + "/relleno").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    const std::array<char, 4096> bytes{};
    while (write(fd, bytes.data(), bytes.size()) > 0) {
    }
    const bool lleno = errno == ENOSPC;
    close(fd);
    if (!lleno) throw std::runtime_error("the small disk did not fill up");
}

void DiscoChico::vaciar() const { unlink((ruta_ + "/relleno").c_str()); }

} // namespace quorvel::apoyo
