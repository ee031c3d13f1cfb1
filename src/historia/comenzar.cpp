#include "historia/comenzar.h"

#include "historia/guardados.h"
#include "platform/db/literal.h"

#include <utility>

namespace quorvel {
namespace {

void escribir(clsConexion& db, const std::vector<std::string>& sql) {
    const auto filas = db.executesql_each(sql);
    if (filas.size() < sql.size()) throw ErrorSesion(db.last_error(), sql[filas.size()]);
}

void exigir_tablas(clsConexion& db) {
    if (!db.has_table("ctmhistoria") || !db.has_table("ctdhistoria"))
        throw ErrorSesion("La base de datos no tiene las tablas de la historia: las crea quorvel db tune",
                          {});
}

/// Adds the row if it is missing, with the switches: who may add a company need not be one who may change
/// them.
/// @return whether it was
bool tomar(clsConexion& db, int empresa, const Proteccion& p) {
    const std::string e = sql_numero(empresa);
    if (has_rows(db, "select empresa from ctmhistoria where empresa=" + e)) return false;
    escribir(db, {"insert into ctmhistoria(empresa,guarda,cerrado) values (" + e + "," +
                  sql_numero(p.historia ? 1 : 0) + "," + sql_numero(p.cierre ? 1 : 0) + ")"});
    return true;
}

void suceder(clsConexion& db, int empresa, int usuario, const std::string& que) {
    escribir(db, sql_suceso({.empresa = empresa, .usuario = usuario, .operacion = que}));
}

long poner_al_dia(clsConexion& db, int empresa, int usuario, bool nueva,
                  const std::function<void(long, long)>& avance) {
    const auto todos = comprobantes_guardados(db, empresa);
    constexpr std::size_t TANDA = 200;
    std::vector<std::string> sql;
    long escritas = 0;
    for (std::size_t i = 0; i < todos.size(); ++i) {
        if (nueva || !tiene_version(db, empresa, todos[i])) {
            ++escritas;
            for (std::string& una : sql_version({.empresa = empresa,
                                    .usuario = usuario,
                                    .operacion = operacion::INICIO,
                                    .clave = todos[i].clave,
                                    .solo_abierto = false},
                                                todos[i].donde))
                sql.push_back(std::move(una));
        }
        if ((i + 1) % TANDA != 0 && i + 1 != todos.size()) continue;
        escribir(db, std::exchange(sql, {}));
        if (avance) avance(static_cast<long>(i + 1), static_cast<long>(todos.size()));
    }
    if (nueva) return escritas;
    for (const std::string& clave : quitados_sin_historia(db, empresa)) {
        ++escritas;
        escribir(db, sql_suceso({.empresa = empresa,
                                 .usuario = usuario,
                                 .operacion = operacion::ELIMINADO,
                                 .clave = clave,
                                 .solo_abierto = false}));
    }
    return escritas;
}

} // namespace

long comenzar_historia(clsConexion& db, int empresa, int usuario,
                       const std::function<void(long, long)>& avance) {
    const bool nueva = tomar(db, empresa, {.historia = true});
    return poner_al_dia(db, empresa, usuario, nueva, avance);
}

void proteger(clsConexion& db, int empresa, int usuario, bool historia, bool cierre,
              const std::function<void(long, long)>& avance) {
    exigir_tablas(db);
    Transaccion t(db);
    const Proteccion antes = leer_proteccion(db, empresa);
    const bool nueva = tomar(db, empresa, {.historia = historia, .cierre = cierre});
    if (historia && !antes.historia) (void)poner_al_dia(db, empresa, usuario, nueva, avance);
    const auto si = [](bool b) { return std::string(b ? "1" : "0"); };
    if (!nueva && (historia != antes.historia || cierre != antes.cierre))
        escribir(db, {"update ctmhistoria set guarda=" + si(historia) + ", cerrado=" + si(cierre) +
                      " where empresa=" + sql_numero(empresa)});
    if (historia != antes.historia) suceder(db, empresa, usuario, historia ? "historia: sí" : "historia: no");
    if (cierre != antes.cierre)
        suceder(db, empresa, usuario,
                cierre ? "protección de lo cerrado: sí" : "protección de lo cerrado: no");
    t.confirmar();
}

void bloquear_mes(clsConexion& db, int empresa, int usuario, int anio, int mes, bool bloqueado) {
    exigir_tablas(db);
    const std::string este = texto_mes(anio, mes), e = sql_numero(empresa);
    Transaccion t(db);
    // taken before it is read: a change that is under way in this month ends first
    escribir(db, {"update ctmhistoria set numero=numero where empresa=" + e});
    const Proteccion p = leer_proteccion(db, empresa);
    std::string meses = p.meses;
    const std::size_t donde = meses.find(este);
    if ((donde != std::string::npos) == bloqueado) return;
    bloqueado ? meses.append(este + " ") : meses.erase(donde, este.size() + 1);
    escribir(db, {"update ctmhistoria set meses=" + sql_texto(meses) + " where empresa=" + e});
    if (p.historia)
        suceder(db, empresa, usuario, (bloqueado ? "mes bloqueado: " : "mes desbloqueado: ") + este);
    t.confirmar();
}

} // namespace quorvel
