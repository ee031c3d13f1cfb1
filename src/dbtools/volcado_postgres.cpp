#include "dbtools/programa.h"
#include "dbtools/volcado.h"
#include "platform/db/clsConexion.h"
#include "platform/db/postgres/server_text.h"

#include <libpq-fe.h>

#include <chrono>
#include <set>
#include <thread>

namespace quorvel::dbtools {

namespace fs = std::filesystem;

namespace {

constexpr const char* PAQUETE = "postgresql-client";

/// A connection text in two parts: what may stand on a command line, and the secrets.
struct Partes {
    std::string publica;
    std::vector<std::string> secretos; ///< "PGPASSWORD=…"
};

Partes partir(const std::string& conexion) {
    const std::unique_ptr<PQconninfoOption, void (*)(PQconninfoOption*)> opciones(
        PQconninfoParse(server_text(conexion).libpq.c_str(), nullptr), PQconninfoFree);
    if (!opciones) throw ErrorSesion("La conexión no se entiende", {});
    Partes partes;
    for (const PQconninfoOption* o = opciones.get(); o->keyword != nullptr; ++o) {
        if (o->val == nullptr) continue;
        const bool secreto = o->dispchar[0] == '*';
        if (secreto && o->envvar != nullptr) partes.secretos.push_back(std::string(o->envvar) + "=" + o->val);
        if (secreto) continue;
        partes.publica += std::string(o->keyword) + "='";
        for (const char* c = o->val; *c != '\0'; ++c) {
            if (*c == '\'' || *c == '\\') partes.publica += '\\';
            partes.publica += *c;
        }
        partes.publica += "' ";
    }
    return partes;
}

/// Whatever the language: a failure is told from this line on.
bool dice_por_que(const std::string& linea) { return linea.find("error") != std::string::npos; }

/// A program of the server's makers, at work on one database and asking nobody anything. It names each object
/// as it comes to it: that many of the total are done.
void ejecutar(const std::string& conexion, std::vector<std::string> orden, const char* que, long total,
              const AvancePartes& avance) {
    const Partes partes = partir(conexion);
    orden.insert(orden.begin() + 1, {"--verbose", "--no-password", "--dbname", partes.publica});
    avance(que, 0, total);
    ejecutar_programa(orden, partes.secretos, PAQUETE,
                      [&, hechos = 0L, falla = false](const std::string& linea) mutable {
                          if (linea.empty()) avance(que, hechos, total);
                          if (linea.find("public.") != std::string::npos) avance(que, hechos++, total);
                          return falla = falla || dice_por_que(linea);
                      });
    avance(que, total, total);
}

long tablas(Base& base) {
    std::set<std::string> nombres;
    for (const auto& columna : base.columnas()) nombres.insert(columna[0]);
    return static_cast<long>(nombres.size());
}

long objetos(const std::string& archivo) {
    long n = 0;
    ejecutar_programa({"pg_restore", "--list", "--file=/dev/stderr", archivo}, {}, PAQUETE,
                      [&](const std::string& linea) {
                          n += linea.find(" public ") != std::string::npos ? 1 : 0;
                          return dice_por_que(linea);
                      });
    return n;
}

std::unique_ptr<Base> sacar(const std::string& conexion, const fs::path& archivo,
                            const AvancePartes& avance) {
    auto base = abrir_base(conexion, Abrir::existente);
    base->ejecutar("begin isolation level repeatable read read only;"
                   " set local idle_in_transaction_session_timeout = 0");
    const std::string momento = base->consultar("select pg_export_snapshot()")[0][0];
    ejecutar(
        conexion,
        {"pg_dump", "--format=custom", "--snapshot=" + momento, "--file=" + fs::absolute(archivo).string()},
        "Copiando la base de datos", tablas(*base), avance);
    return base;
}

/// Who else is in the database; the server's own processes work in nobody's name.
std::string otros(Base& base) {
    return base.consultar("select string_agg(distinct usename, ', ') from pg_stat_activity"
                          " where datname=current_database() and pid<>pg_backend_pid()")[0][0];
}

class DestinoPostgres final : public Destino {
public:
    DestinoPostgres(std::string conexion, bool reemplazar)
        : conexion_(std::move(conexion)), reemplazar_(reemplazar) {
        const auto base = abrir_base(conexion_, Abrir::existente);
        if (!reemplazar_ && !base->columnas().empty()) throw ErrorSesion(CON_TABLAS, {});
        std::string quienes = otros(*base);
        for (int i = 0; i < 10 && !quienes.empty(); ++i) { // a connection takes a moment to go
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            quienes = otros(*base);
        }
        if (!quienes.empty()) throw ErrorSesion(EN_USO + (" (" + quienes) + ")", {});
    }
    void poner(const fs::path& archivo, const AvancePartes& avance) override {
        // Whoever restores owns what comes; what others may do comes with the tables and wants their roles.
        std::vector<std::string> orden = {"pg_restore", "--single-transaction", "--no-owner"};
        if (reemplazar_) orden.insert(orden.end(), {"--clean", "--if-exists"});
        const std::string ruta = fs::absolute(archivo).string();
        orden.push_back(ruta);
        ejecutar(conexion_, std::move(orden), "Restaurando la base de datos", objetos(ruta), avance);
    }

private:
    std::string conexion_;
    bool reemplazar_;
};

std::unique_ptr<Destino> destino(const std::string& conexion, bool reemplazar) {
    return std::make_unique<DestinoPostgres>(conexion, reemplazar);
}

} // namespace

const Volcado VOLCADO_POSTGRES{"base.dump", sacar, destino};

const Volcado& volcado_de(const std::string& conexion) {
    return normalizar_conexion(conexion).starts_with("sqlite:") ? VOLCADO_SQLITE : VOLCADO_POSTGRES;
}

} // namespace quorvel::dbtools
