#include "dbtools/esquema.h"

#include "dbtools/base.h"
#include "dbtools/datos.h"
#include "platform/db/clsConexion.h"

#include <filesystem>
#include <system_error>

namespace quorvel::dbtools {

void crear_esquema(Base& base) {
    for (const auto& columna : base.columnas())
        if (columna[0] == "ctcquorvel") throw ErrorSesion("La base de datos ya contiene comprobantes", {});
    base.ejecutar(leer_dato("schema/" + base.motor() + ".sql"));
}

void en_transaccion(const std::string& conexion, const std::function<void(Base&)>& trabajo) {
    const std::string completa = normalizar_conexion(conexion);
    const std::string ruta = completa.rfind("sqlite:", 0) == 0 ? completa.substr(7) : "";
    const bool nueva = !ruta.empty() && !std::filesystem::exists(ruta);
    try {
        const auto base = abrir_base(completa, Abrir::crear);
        Lote lote(*base);
        trabajo(*base);
        lote.confirmar();
    } catch (...) {
        std::error_code ignorado;
        if (nueva)
            for (const char* cola : {"", "-wal", "-shm"}) std::filesystem::remove(ruta + cola, ignorado);
        throw;
    }
}

void crear_esquema(const std::string& conexion) {
    en_transaccion(conexion, [](Base& base) { crear_esquema(base); });
}

} // namespace quorvel::dbtools
