#include "apoyo/pg.h"

#include <arpa/inet.h>
#include <libpq-fe.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace quorvel::apoyo {
namespace {

namespace fs = std::filesystem;

/// Runs a shell command. @throws std::runtime_error with its output when it fails
void ejecutar(const std::string& orden) {
    FILE* tubo = popen((orden + " 2>&1 </dev/null").c_str(), "r");
    if (tubo == nullptr) throw std::runtime_error("popen: " + orden);
    std::string salida;
    std::array<char, 512> parte{};
    while (std::fgets(parte.data(), parte.size(), tubo) != nullptr) salida += parte.data();
    if (pclose(tubo) != 0) throw std::runtime_error(orden + ": " + salida);
}

fs::path binarios() {
    fs::path mejor;
    const fs::path base = "/usr/lib/postgresql";
    if (fs::exists(base))
        for (const auto& version : fs::directory_iterator(base))
            if (fs::exists(version.path() / "bin/initdb") && version.path() > mejor) mejor = version.path();
    if (mejor.empty()) throw std::runtime_error("no PostgreSQL server is installed");
    return mejor / "bin";
}

/// What the tests ask of a server: it need not survive a power cut.
std::string opciones_servidor = "-F -c shared_buffers=32MB";

class Servidor {
public:
    Servidor() : bin_(binarios()) {
        std::string plantilla = (fs::temp_directory_path() / "quorvel-pg-XXXXXX").string();
        if (mkdtemp(plantilla.data()) == nullptr) throw std::runtime_error("mkdtemp");
        carpeta_ = plantilla;
        try {
            arrancar();
        } catch (...) {
            fs::remove_all(carpeta_);
            throw;
        }
    }
    ~Servidor() {
        try {
            ejecutar(como_usuario((bin_ / "pg_ctl").string() + " -D " + datos() + " -m immediate -w stop"));
            std::error_code e;
            fs::remove_all(carpeta_, e);
        } catch (const std::exception& e) {
            std::fprintf(stderr, "PostgreSQL was not stopped: %s\n", e.what());
        }
    }
    Servidor(const Servidor&) = delete;
    Servidor& operator=(const Servidor&) = delete;

    std::string nueva(const std::string& modelo = "template1") {
        const std::string nombre = "prueba" + std::to_string(++bases_);
        administrar("create database " + nombre + " template " + modelo);
        return conexion(nombre);
    }
    void administrar(const std::string& sql) const {
        PGconn* c = PQconnectdb(conexion("postgres").c_str());
        PGresult* r = PQexecParams(c, sql.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0);
        const bool bien = PQresultStatus(r) == PGRES_COMMAND_OK || PQresultStatus(r) == PGRES_TUPLES_OK;
        const std::string error = PQerrorMessage(c);
        PQclear(r);
        PQfinish(c);
        if (!bien) throw std::runtime_error(sql + ": " + error);
    }

private:
    [[nodiscard]] std::string datos() const { return (carpeta_ / "datos").string(); }
    [[nodiscard]] std::string conexion(const std::string& base) const {
        return "postgresql://postgres@127.0.0.1:" + std::to_string(puerto_) + "/" + base;
    }
    /// The server refuses to run as root.
    [[nodiscard]] static std::string como_usuario(const std::string& orden) {
        return geteuid() == 0 ? "cd / && runuser -u postgres -- " + orden : orden;
    }
    void arrancar() {
        if (geteuid() == 0) ejecutar("chown postgres " + carpeta_.string());
        const std::string inicio = " -A trust -U postgres -E UTF8 --locale=C.UTF-8 --no-sync";
        ejecutar(como_usuario((bin_ / "initdb").string() + " -D " + datos() + inicio));
        for (int intento = 1;; ++intento) { // another program may take the port first
            puerto_ = puerto_libre();
            const std::string opciones = "\"-p " + std::to_string(puerto_) + " -k " + carpeta_.string() +
                                         " -h 127.0.0.1 " + opciones_servidor + "\"";
            try {
                ejecutar(como_usuario((bin_ / "pg_ctl").string() + " -D " + datos() + " -l " + datos() +
                                      ".log -w -o " + opciones + " start"));
                vigilar();
                return;
            } catch (const std::exception&) {
                if (intento == 3) throw;
            }
        }
    }

    /// A test that is killed stops no server: a shell waits for this process and does it then.
    void vigilar() const {
        const std::string parar =
            como_usuario((bin_ / "pg_ctl").string() + " -D " + datos() + " -m immediate stop");
        ejecutar("(while kill -0 " + std::to_string(getpid()) + "; do sleep 2; done; test -d " + datos() +
                 " && (" + parar + "; rm -rf " + carpeta_.string() + ")) >/dev/null 2>&1 &");
    }

    fs::path bin_, carpeta_;
    int puerto_ = 0, bases_ = 0;
};

Servidor& servidor() {
    static Servidor uno;
    return uno;
}

} // namespace

void pg_opciones(const std::string& opciones) { opciones_servidor = opciones; }

int puerto_libre() {
    const int s = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in direccion{};
    direccion.sin_family = AF_INET;
    direccion.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t largo = sizeof direccion;
    const bool bien = bind(s, reinterpret_cast<sockaddr*>(&direccion), sizeof direccion) == 0 &&
                      getsockname(s, reinterpret_cast<sockaddr*>(&direccion), &largo) == 0;
    close(s);
    if (!bien) throw std::runtime_error("no free port");
    return ntohs(direccion.sin_port);
}

std::string pg_conexion_nueva() { return servidor().nueva(); }

std::string pg_copia(const std::string& conexion) {
    return servidor().nueva(conexion.substr(conexion.rfind('/') + 1));
}

void pg_cortar_conexiones() {
    servidor().administrar(
        "select pg_terminate_backend(pid) from pg_stat_activity where pid <> pg_backend_pid() "
        "and backend_type = 'client backend'");
}

} // namespace quorvel::apoyo
