#include "apoyo/proceso.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace quorvel::apoyo {

Proceso::Proceso(const std::function<std::string()>& trabajo)
    : Proceso([&trabajo](int salida) {
          const std::string texto = trabajo();
          for (std::size_t n = 0; n < texto.size();) {
              const ssize_t escritos = write(salida, texto.data() + n, texto.size() - n);
              if (escritos <= 0) break;
              n += static_cast<std::size_t>(escritos);
          }
      }) {}

Proceso::Proceso(const std::function<void(int)>& trabajo) {
    std::array<int, 2> tubo{};
    std::fflush(nullptr);
    if (pipe(tubo.data()) != 0 || (pid_ = fork()) < 0) throw std::runtime_error("fork");
    if (pid_ != 0) {
        close(tubo[1]);
        tubo_ = tubo[0];
        return;
    }
    close(tubo[0]);
    const auto fallas = [] {
        return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
    };
    const int heredadas = fallas();
    try {
        trabajo(tubo[1]);
    } catch (const std::exception& e) {
        ADD_FAILURE() << e.what();
    }
    std::fflush(nullptr);
    _exit(fallas() == heredadas ? 0 : 1);
}

Proceso::~Proceso() {
    if (pid_ == 0) return;
    matar();
    (void)esperar();
}

bool base_en_uso(const std::string& archivo) {
    Proceso otro([&]() -> std::string {
        for (const std::string& cual : {archivo, archivo + "-shm"}) {
            const int fd = open(cual.c_str(), O_RDWR | O_CLOEXEC);
            struct flock todo {};
            todo.l_type = F_WRLCK;
            if (fd >= 0 && (fcntl(fd, F_GETLK, &todo) != 0 || todo.l_type == F_UNLCK)) return "libre";
        }
        return "en uso";
    });
    return otro.esperar().texto == "en uso";
}

void Proceso::matar() { kill(pid_, SIGKILL); }

void Proceso::esperar_salida() const {
    pollfd espera{tubo_, POLLIN, 0};
    (void)poll(&espera, 1, 30000);
}

Final Proceso::esperar() {
    Final f;
    std::array<char, 4096> parte{};
    for (ssize_t n; (n = read(tubo_, parte.data(), parte.size())) > 0;)
        f.texto.append(parte.data(), static_cast<std::size_t>(n));
    close(tubo_);
    int estado = 0;
    waitpid(pid_, &estado, 0);
    pid_ = 0;
    f.matado = WIFSIGNALED(estado);
    f.codigo = f.matado ? WTERMSIG(estado) : WEXITSTATUS(estado);
    return f;
}

std::vector<Final> en_procesos(int cuantos, const std::function<std::string(int)>& trabajo) {
    std::vector<std::unique_ptr<Proceso>> procesos;
    for (int i = 0; i < cuantos; ++i)
        procesos.push_back(std::make_unique<Proceso>([&trabajo, i] { return trabajo(i); }));
    std::vector<Final> finales;
    for (const auto& p : procesos) finales.push_back(p->esperar());
    return finales;
}

void morir() {
    kill(getpid(), SIGKILL);
    _exit(127);
}

} // namespace quorvel::apoyo
