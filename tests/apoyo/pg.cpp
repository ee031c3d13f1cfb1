#include "apoyo/pg.h"

#include "apoyo/pgbouncer.h"
#include "apoyo/servidor.h"

#include <cstdlib>

namespace quorvel::apoyo {
namespace {

Servidor& servidor() {
    static Servidor uno(std::string(SIN_DURAR) + " -c max_connections=300");
    return uno;
}

/// Whether everybody goes through a pooler that lends a server connection for one transaction.
bool mancomunado() { return std::getenv("QUORVEL_MANCOMUNADO") != nullptr; }

std::string base_de(const std::string& conexion) { return conexion.substr(conexion.rfind('/') + 1); }

/// Each transaction takes the connection that has waited longest, so that what one leaves another finds.
Pgbouncer& delante() {
    static Pgbouncer uno(servidor().puerto(), "transaction", 20,
                         "server_round_robin = 1\nmin_pool_size = 2\nserver_idle_timeout = 5\n");
    return uno;
}

std::string por_el_camino(const std::string& conexion) {
    return mancomunado() ? delante().conexion(base_de(conexion)) : conexion;
}

} // namespace

std::string pg_conexion_nueva() { return por_el_camino(servidor().nueva()); }

std::string pg_copia(const std::string& conexion) {
    const std::string modelo = base_de(conexion);
    if (mancomunado()) // what waits for its next client is in nobody's use
        (void)servidor().administrar(
            "select pg_terminate_backend(pid,5000) from pg_stat_activity where datname='" + modelo + "'");
    return por_el_camino(servidor().nueva(modelo));
}

void pg_cortar_conexiones() {
    if (mancomunado()) return delante().reiniciar();
    (void)servidor().administrar(
        "select pg_terminate_backend(pid) from pg_stat_activity where pid <> pg_backend_pid() "
        "and backend_type = 'client backend'");
}

} // namespace quorvel::apoyo
