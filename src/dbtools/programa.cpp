#include "dbtools/programa.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace quorvel::dbtools {

namespace {

constexpr int UN_RATO_MS = 200;

std::vector<char*> punteros(const std::vector<std::string>& textos) {
    std::vector<char*> todos;
    for (const std::string& t : textos) todos.push_back(const_cast<char*>(t.c_str()));
    todos.push_back(nullptr);
    return todos;
}

/// This process' environment with some of its values replaced.
std::vector<std::string> entorno_con(const std::vector<std::string>& propios) {
    std::vector<std::string> entorno = propios;
    for (char** e = environ; *e != nullptr; ++e) {
        const std::string_view valor = *e, nombre = valor.substr(0, valor.find('=') + 1);
        if (std::none_of(propios.begin(), propios.end(),
                         [&](const auto& p) { return p.starts_with(nombre); }))
            entorno.emplace_back(valor);
    }
    return entorno;
}

/// Listens until the other side is closed. @return the lines that tell why it fails
std::string oir(int fd, const Oyente& oye) {
    std::string motivo, resto;
    const auto linea = [&](const std::string& texto) {
        if (!texto.empty() && oye(texto)) motivo += (motivo.empty() ? "" : "\n") + texto;
    };
    std::array<char, 4096> parte{};
    const auto callado = [&] {
        pollfd p{fd, POLLIN, 0};
        return poll(&p, 1, UN_RATO_MS) == 0;
    };
    while (true) {
        if (callado()) {
            (void)oye("");
            continue;
        }
        const ssize_t n = read(fd, parte.data(), parte.size());
        if (n == 0 || (n < 0 && errno != EINTR)) break;
        if (n > 0) resto.append(parte.data(), static_cast<std::size_t>(n));
        for (std::size_t fin; (fin = resto.find('\n')) != std::string::npos; resto.erase(0, fin + 1))
            linea(resto.substr(0, fin));
    }
    linea(resto);
    return motivo;
}

/// A program that runs: whoever stops listening to it ends it.
class Hijo {
public:
    Hijo(pid_t pid, int fd) : pid_(pid), fd_(fd) {}
    ~Hijo() {
        close(fd_);
        if (pid_ <= 0) return;
        kill(pid_, SIGTERM);
        (void)esperar();
    }
    Hijo(const Hijo&) = delete;
    Hijo& operator=(const Hijo&) = delete;
    int esperar() {
        int estado = 0;
        while (waitpid(pid_, &estado, 0) < 0 && errno == EINTR) {
        }
        pid_ = 0;
        return estado;
    }

private:
    pid_t pid_;
    int fd_;
};

} // namespace

void ejecutar_programa(const std::vector<std::string>& orden, const std::vector<std::string>& ambiente,
                       const std::string& paquete, const Oyente& oye) {
    const std::vector<std::string> entorno = entorno_con(ambiente);
    std::array<int, 2> tubo{};
    if (pipe2(tubo.data(), O_CLOEXEC) != 0) throw std::runtime_error(std::strerror(errno));
    posix_spawn_file_actions_t archivos;
    posix_spawn_file_actions_init(&archivos);
    posix_spawn_file_actions_addopen(&archivos, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&archivos, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&archivos, tubo[1], STDERR_FILENO);
    pid_t hijo = 0;
    const int error = posix_spawnp(&hijo, orden[0].c_str(), &archivos, nullptr, punteros(orden).data(),
                                   punteros(entorno).data());
    posix_spawn_file_actions_destroy(&archivos);
    close(tubo[1]);
    Hijo programa(error == 0 ? hijo : 0, tubo[0]);
    const std::string dicho = error == 0 ? oir(tubo[0], oye) : "";
    if (error == ENOENT)
        throw std::runtime_error("No se encuentra el programa " + orden[0] + ": instale el paquete " +
                                 paquete);
    if (error != 0) throw std::runtime_error(orden[0] + ": " + std::strerror(error));
    if (programa.esperar() != 0)
        throw std::runtime_error(dicho.empty() ? orden[0] + ": no terminó bien" : dicho);
}

} // namespace quorvel::dbtools
