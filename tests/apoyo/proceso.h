#pragma once
#include <functional>
#include <string>
#include <vector>

namespace quorvel::apoyo {

/// How a process ended and what it said.
struct Final {
    bool matado = false; ///< by a signal
    int codigo = 0;
    std::string texto;
};
/// A copy of this process that runs one function, whose answer comes back, and then ends without tidying up.
/// Sessions of this process must not be used in it; a failed expectation in it makes its code 1.
class Proceso {
public:
    explicit Proceso(const std::function<std::string()>& trabajo);
    /// The function writes its answer itself, piece by piece, into the descriptor that it gets.
    explicit Proceso(const std::function<void(int)>& trabajo);
    ~Proceso();
    Proceso(const Proceso&) = delete;
    Proceso& operator=(const Proceso&) = delete;
    void matar();
    /// Waits until it has said something.
    void esperar_salida() const;
    /// Waits for its end.
    [[nodiscard]] Final esperar();

private:
    int pid_ = 0, tubo_ = -1;
};
/// Runs the function in so many processes at once, each with its number from 0. @return their ends in order
[[nodiscard]] std::vector<Final> en_procesos(int cuantos, const std::function<std::string(int)>& trabajo);
/// Whether another process finds locks on a database's file and on the index of its log, if there is one.
[[nodiscard]] bool base_en_uso(const std::string& archivo);
/// Ends this process at once, as a power cut would.
[[noreturn]] void morir();

} // namespace quorvel::apoyo
