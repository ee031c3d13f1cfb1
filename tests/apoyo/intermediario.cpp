#include "apoyo/intermediario.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace quorvel::apoyo {
namespace {

sockaddr_in local(int puerto) {
    sockaddr_in d{};
    d.sin_family = AF_INET;
    d.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    d.sin_port = htons(static_cast<std::uint16_t>(puerto));
    return d;
}

/// Hands on what has arrived. @return false when that side has closed
bool pasar(int de, int a) {
    std::array<char, 65536> parte{};
    const ssize_t n = recv(de, parte.data(), parte.size(), 0);
    return n > 0 && (a < 0 || send(a, parte.data(), static_cast<std::size_t>(n), MSG_NOSIGNAL) == n);
}

} // namespace

Intermediario::Intermediario(const std::string& conexion) {
    const std::size_t arroba = conexion.find('@'), dos = conexion.find(':', arroba),
                      barra = conexion.find('/', dos);
    puerto_servidor_ = std::stoi(conexion.substr(dos + 1, barra - dos - 1));
    oreja_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in d = local(0);
    socklen_t largo = sizeof d;
    if (bind(oreja_, reinterpret_cast<sockaddr*>(&d), largo) != 0 || listen(oreja_, 8) != 0 ||
        getsockname(oreja_, reinterpret_cast<sockaddr*>(&d), &largo) != 0)
        throw std::runtime_error("no listening socket");
    conexion_ = conexion.substr(0, dos + 1) + std::to_string(ntohs(d.sin_port)) + conexion.substr(barra);
    hilo_ = std::thread([this] { servir(); });
}

Intermediario::~Intermediario() {
    fin_ = true;
    hilo_.join();
    close(oreja_);
}

/// One session at a time: a session that comes back has closed its old connection.
void Intermediario::servir() {
    while (!fin_) {
        pollfd espera{oreja_, POLLIN, 0};
        if (poll(&espera, 1, 20) <= 0) continue;
        const int cliente = accept(oreja_, nullptr, nullptr);
        if (cliente < 0) continue;
        atender(cliente);
        close(cliente);
    }
}

void Intermediario::atender(int cliente) {
    const int servidor = socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in d = local(puerto_servidor_);
    bool vivo = connect(servidor, reinterpret_cast<const sockaddr*>(&d), sizeof d) == 0;
    bool callar = false;
    std::array<pollfd, 2> espera{{{cliente, POLLIN, 0}, {servidor, POLLIN, 0}}};
    while (vivo && !fin_) {
        if (poll(espera.data(), espera.size(), 20) <= 0) continue;
        if (espera[0].revents != 0) {
            const Perder que = perder_.exchange(Perder::nada);
            if (que == Perder::pedido) break;
            callar = callar || que == Perder::respuesta;
            vivo = pasar(cliente, servidor);
        }
        if (vivo && espera[1].revents != 0) {
            vivo = pasar(servidor, callar ? -1 : cliente);
            if (!callar) continue;
            al_perder();
            break;
        }
    }
    close(servidor);
}

} // namespace quorvel::apoyo
