#pragma once
#include <sys/types.h>

#include <string>

namespace quorvel::apoyo {

/// Debian's pgbouncer in front of all databases of a server on the loopback; stopped when it goes out of
/// scope.
class Pgbouncer {
public:
    /// @param puerto of the server @param modo "session" or "transaction" @param sesiones of the server that
    /// it may hold for each database @param ajustes further lines of its settings
    /// @throws std::runtime_error when it does not start
    Pgbouncer(int puerto, const std::string& modo, int sesiones, const std::string& ajustes = "");
    ~Pgbouncer();
    Pgbouncer(const Pgbouncer&) = delete;
    Pgbouncer& operator=(const Pgbouncer&) = delete;
    [[nodiscard]] std::string conexion(const std::string& base) const;
    /// Ends it as a power cut does, and starts it again: its clients lose their connections.
    void reiniciar();
    [[nodiscard]] pid_t proceso() const { return proceso_; }

private:
    void arrancar();
    void terminar(int senal);

    std::string ajustes_;
    int puerto_;
    pid_t proceso_ = 0;
};

} // namespace quorvel::apoyo
