#include "yearend/cierre.h"

#include "platform/db/literal.h"
#include "yearend/saldos.h"

namespace quorvel {

ResultadoAsiento generar_lineas_cierre(clsConexion& db, const PedidoCierre& p, const Avance& avance) {
    const std::string sql =
        "select a.centro,coalesce(a.auxiliar,''),sum(a.debe_nacional) as debe, sum(a.haber_nacional) as haber"
        "  from ctdquorvel a  where a.empresa=" +
        sql_numero(p.empresa) + " and a.f_comp<=" + sql_fecha(p.hasta) + CUENTAS_RESULTADO +
        " group by a.centro,coalesce(a.auxiliar,'') order by sum(a.haber_nacional) desc, a.centro,"
        " coalesce(a.auxiliar,'') ";
    ArmadorAsiento a(p.glosa);
    Decimal debe, haber; // the year's result is the sum of the very rows that are reversed
    const auto fila = [&](Saldo s) {
        debe = debe + s.debe;
        haber = haber + s.haber;
        const Decimal saldo = s.debe - s.haber;
        s.debe = saldo > Decimal() ? Decimal() : Decimal() - saldo;
        s.haber = saldo > Decimal() ? saldo : Decimal();
        a.poner(s, true);
    };
    if (!recorrer_saldos(db, sql, avance, fila)) return {{Desenlace::cancelado, CANCELADA}, {}};
    const bool perdida = debe > haber;
    const std::string& cuenta = perdida ? p.centro_per : p.centro_gan;
    if (auto rechazo = sin_cuenta_resultado(cuenta, perdida)) return {std::move(*rechazo), {}};
    a.poner({cuenta, "", "", perdida ? debe - haber : Decimal(), perdida ? Decimal() : haber - debe}, true);
    return {{}, a.terminar(p.debe, p.haber)};
}

} // namespace quorvel
