#pragma once
#include <sys/types.h>

#include <string>

namespace quorvel::bench {

/// Debian's pgbouncer in front of one database of a server on the loopback; stopped when it goes out of
/// scope.
class Pgbouncer {
public:
    [[nodiscard]] static bool instalado();
    /// @param modo "session" or "transaction" @param sesiones of the server that it may hold
    /// @throws std::runtime_error when it does not start
    Pgbouncer(const std::string& servidor, const std::string& modo, int sesiones);
    ~Pgbouncer();
    Pgbouncer(const Pgbouncer&) = delete;
    Pgbouncer& operator=(const Pgbouncer&) = delete;
    [[nodiscard]] const std::string& conexion() const { return conexion_; }
    [[nodiscard]] pid_t proceso() const { return proceso_; }

private:
    std::string conexion_;
    pid_t proceso_ = 0;
};

} // namespace quorvel::bench
