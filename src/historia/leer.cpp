#include "historia/leer.h"

#include "platform/db/literal.h"

namespace quorvel {
namespace {

constexpr const char *RESUMEN = "select numero,momento,anterior,usuario,maquina,operacion,grupo,clave",
                     *ENTERA = ",cabecera,lineas,adjuntos,sumas";

std::string de_empresa(int empresa) { return " from ctdhistoria where empresa=" + sql_numero(empresa); }

Version leer_fila(Recordset& rs) {
    const auto texto = [&](std::size_t i) {
        return i < rs.columns().size() ? rs.at(i).text() : std::string();
    };
    return {rs.at(0).integer(), texto(1), texto(2),  static_cast<int>(rs.at(3).integer()),
            texto(4),           texto(5), texto(6),  texto(7),
            texto(8),           texto(9), texto(10), texto(11)};
}

std::vector<Version> leer_todas(clsConexion& db, const std::string& sql) {
    std::vector<Version> versiones;
    for (const auto rs = db.NewRecord(sql); !rs->eof(); rs->MoveNext()) versiones.push_back(leer_fila(*rs));
    return versiones;
}

} // namespace

std::vector<Version> leer_versiones(clsConexion& db, int empresa, const std::string& clave) {
    if (!db.has_table("ctdhistoria")) return {};
    return leer_todas(db, RESUMEN + de_empresa(empresa) + " and clave=" + sql_texto(clave) +
                              " order by numero desc");
}

std::vector<Version> leer_eliminados(clsConexion& db, int empresa) {
    if (!db.has_table("ctdhistoria")) return {};
    return leer_todas(
        db, RESUMEN + de_empresa(empresa) +
                " and operacion in ('eliminado','cortado') and not exists (select 1 from ctdhistoria"
                " w where w.empresa=ctdhistoria.empresa and w.clave=ctdhistoria.clave and"
                " w.numero>ctdhistoria.numero) order by numero desc");
}

std::optional<Version> leer_version(clsConexion& db, int empresa, std::int64_t numero) {
    auto una = leer_todas(db, std::string(RESUMEN) + ENTERA + de_empresa(empresa) +
                                  " and numero=" + sql_numero(numero));
    return una.empty() ? std::nullopt : std::optional(std::move(una.front()));
}

void recorrer_versiones(clsConexion& db, int empresa, const std::function<void(const Version&)>& cada_una) {
    constexpr std::int64_t TANDA = 256;
    const auto rs = db.NewRecord("select max(numero) as n" + de_empresa(empresa));
    const std::int64_t ultima = rs->eof() ? 0 : rs->at(0).integer();
    for (std::int64_t desde = 0; desde <= ultima; desde += TANDA)
        for (const Version& v : leer_todas(db, std::string(RESUMEN) + ENTERA + de_empresa(empresa) +
                                                   " and numero>=" + sql_numero(desde) + " and numero<" +
                                                   sql_numero(desde + TANDA) + " order by numero"))
            cada_una(v);
}

} // namespace quorvel
