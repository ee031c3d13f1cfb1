#include "apoyo/pgbouncer.h"

#include "apoyo/servidor.h"
#include "apoyo/sesiones.h"

#include <grp.h>
#include <libpq-fe.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace quorvel::apoyo {
namespace {

namespace fs = std::filesystem;

constexpr const char* PROGRAMA = "/usr/sbin/pgbouncer";

/// It refuses to run as root, as the server does.
[[noreturn]] void ejecutar(const std::string& ajustes) {
    if (geteuid() == 0) {
        const passwd* const p = getpwnam("postgres");
        if (p == nullptr || setgroups(0, nullptr) != 0 || setgid(p->pw_gid) != 0 || setuid(p->pw_uid) != 0)
            _exit(126);
    }
    prctl(PR_SET_PDEATHSIG, SIGTERM); // a run that is killed leaves nothing behind
    execl(PROGRAMA, PROGRAMA, "-q", ajustes.c_str(), nullptr);
    _exit(127);
}

} // namespace

Pgbouncer::Pgbouncer(int puerto, const std::string& modo, int sesiones, const std::string& mas)
    : puerto_(puerto_libre()) {
    const fs::path carpeta = carpeta_nueva();
    ajustes_ = (carpeta / "pgbouncer.ini").string();
    std::ofstream(ajustes_) << "[databases]\n* = host=127.0.0.1 port=" << puerto
                            << " user=postgres\n[pgbouncer]\nlisten_addr = 127.0.0.1\nlisten_port = "
                            << puerto_
                            << "\nunix_socket_dir =\nauth_type = any\nmax_client_conn = 1000\npool_mode = "
                            << modo << "\ndefault_pool_size = " << sesiones << '\n'
                            << mas;
    for (const fs::path& ruta : {carpeta.parent_path(), carpeta})
        fs::permissions(ruta, fs::perms(0755)); // its user reads the settings
    arrancar();
}

Pgbouncer::~Pgbouncer() { terminar(SIGTERM); }

std::string Pgbouncer::conexion(const std::string& base) const {
    return "postgresql://postgres@127.0.0.1:" + std::to_string(puerto_) + "/" + base;
}

void Pgbouncer::reiniciar() {
    terminar(SIGKILL);
    arrancar();
}

void Pgbouncer::arrancar() {
    proceso_ = fork();
    if (proceso_ == 0) ejecutar(ajustes_);
    for (int espera = 0; espera < 1000; ++espera) {
        if (PQping(conexion("postgres").c_str()) == PQPING_OK) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    terminar(SIGKILL);
    throw std::runtime_error("pgbouncer does not answer");
}

void Pgbouncer::terminar(int senal) {
    kill(proceso_, senal);
    waitpid(proceso_, nullptr, 0);
}

} // namespace quorvel::apoyo
