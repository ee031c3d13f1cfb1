#include "voucher/nombres.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"

#include <stdexcept>

namespace quorvel {

namespace {

struct Consulta {
    const char *todos, *uno;
};

const Consulta& consulta(Maestro maestro) {
    static constexpr Consulta CUENTAS{
        "select a.centro, a.n_centro from ctmcentros a, ctmgcuenta b where a.g_cuenta=b.g_cuenta"
        " and a.activo='1' and len(a.centro)>=b.longitud order by a.centro",
        "select n_centro from ctmcentros where centro="};
    static constexpr Consulta CENTROS{
        "select a.centro, a.n_centro from ctmcentroc a, ctmgcuentc b where a.g_cuenta=b.g_cuenta"
        " and a.activo='1' and len(a.centro)>=b.longitud order by a.centro",
        "select n_centro from ctmcentroc where centro="};
    static constexpr Consulta AUXILIARES{"select auxiliar, n_auxiliar, rut from ctxaux_cod where activo='1'",
                                         "select n_auxiliar from ctxaux_cod where auxiliar="};
    switch (maestro) {
    case Maestro::cuentas: return CUENTAS;
    case Maestro::centros: return CENTROS;
    case Maestro::auxiliares: return AUXILIARES;
    default: throw std::logic_error("Ese maestro no se busca por nombre");
    }
}

} // namespace

IndicePalabras leer_nombres(clsConexion& db, Maestro maestro) {
    IndicePalabras indice;
    const auto rs = db.NewRecord(consulta(maestro).todos);
    const bool con_rut = rs->columns().size() > 2;
    for (; !rs->eof(); rs->MoveNext())
        indice.agregar(recortar(rs->at(0).text()), recortar(rs->at(1).text()),
                       con_rut ? reemplazar(rs->at(2).text(), ".", "") : "");
    return indice;
}

std::string nombre_de_codigo(clsConexion& db, Maestro maestro, const std::string& codigo) {
    const auto rs = db.NewRecord(consulta(maestro).uno + sql_texto(codigo));
    return rs->eof() ? "" : recortar(rs->at(0).text());
}

} // namespace quorvel
