#pragma once
#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace quorvel::apoyo {

/// Stands between a session and its server, on loopback, and loses what it is told to lose.
class Intermediario {
public:
    enum class Perder {
        nada,
        pedido,   ///< what the session sends next never arrives
        respuesta ///< it arrives and is done, its answer does not
    };
    /// @param conexion "postgresql://user@host:port/base"
    explicit Intermediario(const std::string& conexion);
    ~Intermediario();
    Intermediario(const Intermediario&) = delete;
    Intermediario& operator=(const Intermediario&) = delete;
    /// The connection text that leads through here.
    [[nodiscard]] const std::string& conexion() const { return conexion_; }
    /// For the next request. Afterwards connections are served again.
    void perder(Perder que) { perder_ = que; }
    /// Runs when an answer is lost, before the session can know.
    std::function<void()> al_perder = [] {};

private:
    void servir();
    void atender(int cliente);

    std::string conexion_;
    int puerto_servidor_ = 0, oreja_ = -1;
    std::atomic<Perder> perder_{Perder::nada};
    std::atomic<bool> fin_{false};
    std::thread hilo_;
};

} // namespace quorvel::apoyo
