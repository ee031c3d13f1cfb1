#pragma once
#include "dbtools/base.h"

#include <sys/types.h>

#include <map>
#include <memory>
#include <string>

namespace quorvel::bench {

/// Looks at a PostgreSQL server of this machine while others work.
class Vigia {
public:
    explicit Vigia(const std::string& conexion);
    /// One look at who waits for whom.
    void mirar();
    /// Counters of the server once its clients have gone; those of two moments are subtracted.
    struct Contadores {
        double interbloqueos = 0, wal = 0, tamano = 0; ///< bytes
        double cpu = 0;                                ///< seconds of the server's processes
    };
    [[nodiscard]] Contadores contadores();
    /// Memory of a client's server process that no other shares, MB.
    [[nodiscard]] double memoria_por_sesion();
    struct Esperas {
        int miradas = 0, con_espera = 0;
        double suma = 0, maximo = 0, mas_larga = 0; ///< waiting sessions; seconds so far of the longest wait
        std::map<std::string, int> por_clase;       ///< of lock
    };
    [[nodiscard]] const Esperas& esperas() const { return esperas_; }

private:
    std::unique_ptr<dbtools::Base> base_;
    Esperas esperas_;
};

/// Processor seconds of a process and of its children that have ended.
[[nodiscard]] double cpu(pid_t proceso);

} // namespace quorvel::bench
