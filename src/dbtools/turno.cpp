#include "dbtools/turno.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <stdexcept>

namespace quorvel::dbtools {

Turno::Turno(Base& base, const std::string& conexion) {
    constexpr const char* TOMADO = "Otro programa traslada ahora empresas de esta base de datos";
    if (base.motor() != "sqlite") { // the server takes it back with the connection
        if (base.consultar("select pg_try_advisory_lock(5329229, 1)").at(0).at(0) != "t")
            throw std::runtime_error(TOMADO);
        return;
    }
    // a file beside the database: closing the database's own would let go of the engine's locks
    const std::string ruta = conexion.substr(conexion.find(':') + 1) + ".traslado";
    archivo_ = open(ruta.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (archivo_ < 0) throw std::runtime_error("No se puede escribir " + ruta);
    if (flock(archivo_, LOCK_EX | LOCK_NB) == 0) return;
    close(archivo_);
    throw std::runtime_error(TOMADO);
}

Turno::~Turno() {
    if (archivo_ >= 0) close(archivo_);
}

} // namespace quorvel::dbtools
