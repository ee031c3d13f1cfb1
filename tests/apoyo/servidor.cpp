#include "apoyo/servidor.h"

#include <arpa/inet.h>
#include <libpq-fe.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <thread>

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

fs::path carpeta_propia() {
    std::string plantilla = (fs::temp_directory_path() / "quorvel-pg-XXXXXX").string();
    if (mkdtemp(plantilla.data()) == nullptr) throw std::runtime_error("mkdtemp");
    return plantilla;
}

/// The server refuses to run as root.
std::string como_usuario(const std::string& orden) {
    return geteuid() == 0 ? "cd / && runuser -u postgres -- " + orden : orden;
}

} // namespace

Servidor::Servidor(const std::string& opciones)
    : opciones_(opciones), bin_(binarios()), carpeta_(carpeta_propia()) {
    arrancar("initdb -k -A trust -U postgres -E UTF8 --locale=C.UTF-8 --no-sync -D " + datos());
}

Servidor::Servidor(Servidor& principal, const std::string& opciones)
    : opciones_(opciones), bin_(binarios()), carpeta_(carpeta_propia()) {
    arrancar(copia_de(principal));
    principal.esperar_reserva();
}

Servidor::~Servidor() {
    std::error_code e;
    try {
        if (fs::exists(datos() + "/postmaster.pid")) caer();
    } catch (const std::exception& falla) {
        std::fprintf(stderr, "PostgreSQL was not stopped: %s\n", falla.what());
        return;
    }
    fs::remove_all(carpeta_, e);
}

std::string Servidor::nueva(const std::string& modelo) {
    const std::string nombre = "prueba" + std::to_string(++bases_);
    (void)administrar("create database " + nombre + " template " + modelo + " strategy file_copy");
    return conexion(nombre);
}

std::string Servidor::administrar(const std::string& sql) const {
    const std::unique_ptr<PGconn, void (*)(PGconn*)> c(PQconnectdb(conexion("postgres").c_str()), PQfinish);
    const std::unique_ptr<PGresult, void (*)(PGresult*)> r(
        PQexecParams(c.get(), sql.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0), PQclear);
    const auto estado = PQresultStatus(r.get());
    if (estado != PGRES_COMMAND_OK && estado != PGRES_TUPLES_OK)
        throw std::runtime_error(sql + ": " + PQerrorMessage(c.get()));
    return PQntuples(r.get()) > 0 ? PQgetvalue(r.get(), 0, 0) : "";
}

void Servidor::caer() { ejecutar(pg_ctl("-m immediate -w stop")); }

void Servidor::levantar(const std::string& mas) {
    const std::string opciones = "\"-p " + std::to_string(puerto_) + " -k " + carpeta_.string() +
                                 " -h 127.0.0.1 " + opciones_ + " " + mas + "\"";
    ejecutar(pg_ctl("-l " + datos() + ".log -w -o " + opciones + " start"));
}

void Servidor::seguir(Servidor& principal, Regreso como) {
    if (como == Regreso::copia) {
        fs::remove_all(datos());
        ejecutar(como_usuario(bin_.string() + "/" + copia_de(principal)));
    } else {
        (void)principal.administrar("checkpoint"); // its control file names the new timeline from then on
        (void)principal.administrar("select pg_create_physical_replication_slot('reserva')");
        ejecutar(como_usuario(bin_.string() + "/pg_rewind -R --no-sync -D " + datos() +
                              " --source-server=" + principal.conexion("postgres")));
    }
    levantar();
    principal.esperar_reserva();
}

void Servidor::promover() { ejecutar(pg_ctl("-w promote")); }

std::string Servidor::conexion(const std::string& base) const {
    return "postgresql://postgres@127.0.0.1:" + std::to_string(puerto_) + "/" + base;
}

std::string Servidor::pg_ctl(const std::string& orden) const {
    return como_usuario((bin_ / "pg_ctl").string() + " -D " + datos() + " " + orden);
}

std::string Servidor::copia_de(const Servidor& principal) const {
    return "pg_basebackup -h 127.0.0.1 -p " + std::to_string(principal.puerto_) +
           " -U postgres -R -X stream -C -S reserva -c fast --no-sync -D " + datos();
}

void Servidor::confirmar_con(const std::string& reserva) const {
    (void)administrar("alter system set synchronous_standby_names='" + reserva + "'");
    (void)administrar("select pg_reload_conf()");
    while (administrar("show synchronous_standby_names") != reserva)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    (void)administrar(
        "checkpoint"); // who does it is who tells the commits to wait, and reads the settings first
}

void Servidor::esperar_reserva() const {
    confirmar_con("*");
    for (int i = 0; administrar("select count(*) from pg_stat_replication where sync_state='sync'") != "1";
         ++i) {
        if (i == 200) throw std::runtime_error("the standby does not follow");
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}

/// @param crear the program that makes the data folder, with its arguments
void Servidor::arrancar(const std::string& crear) {
    try {
        if (std::getenv("QUORVEL_SIN_SERVIDOR") != nullptr)
            throw std::runtime_error("a test that needs a server does not say so in its name");
        if (geteuid() == 0) ejecutar("chown postgres " + carpeta_.string());
        ejecutar(como_usuario(bin_.string() + "/" + crear));
        for (int intento = 1;; ++intento) { // another program may take the port first
            puerto_ = puerto_libre();
            try {
                levantar();
                return vigilar();
            } catch (const std::exception&) {
                if (intento == 3) throw;
            }
        }
    } catch (...) {
        fs::remove_all(carpeta_);
        throw;
    }
}

/// A test that is killed stops no server: a shell waits for this process and does it then.
void Servidor::vigilar() const {
    ejecutar("(while kill -0 " + std::to_string(getpid()) + "; do sleep 2; done; test -d " + datos() +
             " && (" + pg_ctl("-m immediate stop") + "; rm -rf " + carpeta_.string() +
             ")) >/dev/null 2>&1 &");
}

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

} // namespace quorvel::apoyo
