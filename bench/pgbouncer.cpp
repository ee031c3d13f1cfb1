#include "pgbouncer.h"

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
#include <map>
#include <stdexcept>
#include <thread>

namespace quorvel::bench {
namespace {

namespace fs = std::filesystem;

constexpr const char* PROGRAMA = "/usr/sbin/pgbouncer";

std::map<std::string, std::string> partes(const std::string& conexion) {
    std::map<std::string, std::string> valores;
    PQconninfoOption* const opciones = PQconninfoParse(conexion.c_str(), nullptr);
    for (const PQconninfoOption* o = opciones; o != nullptr && o->keyword != nullptr; ++o)
        if (o->val != nullptr) valores[o->keyword] = o->val;
    PQconninfoFree(opciones);
    return valores;
}

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

bool Pgbouncer::instalado() { return access(PROGRAMA, X_OK) == 0; }

Pgbouncer::Pgbouncer(const std::string& servidor, const std::string& modo, int sesiones) {
    const auto p = partes(servidor);
    const int puerto = apoyo::puerto_libre();
    const fs::path carpeta = apoyo::carpeta_nueva();
    const std::string ajustes = (carpeta / "pgbouncer.ini").string();
    std::ofstream(ajustes) << "[databases]\n"
                           << p.at("dbname") << " = host=" << p.at("host") << " port=" << p.at("port")
                           << " user=" << p.at("user")
                           << "\n[pgbouncer]\nlisten_addr = 127.0.0.1\nlisten_port = " << puerto
                           << "\nunix_socket_dir =\nauth_type = any\nmax_client_conn = 1000\n"
                           << "pool_mode = " << modo << "\ndefault_pool_size = " << sesiones << '\n';
    for (const fs::path& ruta : {carpeta.parent_path(), carpeta})
        fs::permissions(ruta, fs::perms(0755)); // its user reads the settings
    conexion_ = "postgresql://postgres@127.0.0.1:" + std::to_string(puerto) + "/" + p.at("dbname");
    proceso_ = fork();
    if (proceso_ == 0) ejecutar(ajustes);
    for (int espera = 0; espera < 100; ++espera) {
        if (PQping(conexion_.c_str()) == PQPING_OK) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    kill(proceso_, SIGTERM);
    waitpid(proceso_, nullptr, 0);
    throw std::runtime_error("pgbouncer does not answer");
}

Pgbouncer::~Pgbouncer() {
    kill(proceso_, SIGTERM);
    waitpid(proceso_, nullptr, 0);
}

} // namespace quorvel::bench
