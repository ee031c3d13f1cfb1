#include "apoyo/pg.h"

#include "apoyo/servidor.h"

namespace quorvel::apoyo {
namespace {

Servidor& servidor() {
    static Servidor uno;
    return uno;
}

} // namespace

std::string pg_conexion_nueva() { return servidor().nueva(); }

std::string pg_copia(const std::string& conexion) {
    return servidor().nueva(conexion.substr(conexion.rfind('/') + 1));
}

void pg_cortar_conexiones() {
    (void)servidor().administrar(
        "select pg_terminate_backend(pid) from pg_stat_activity where pid <> pg_backend_pid() "
        "and backend_type = 'client backend'");
}

} // namespace quorvel::apoyo
