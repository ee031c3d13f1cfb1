#include "yearend/apertura.h"

#include "platform/db/literal.h"
#include "voucher/configuracion.h"
#include "yearend/saldos.h"

namespace quorvel {
namespace {

/// What rounds, halves to even, to a whole peso is more than this.
const Decimal MEDIO_PESO = Decimal::leer("0,5");

/// Balance-sheet lines of the year before, without the two accounts that take the result.
std::string desde_donde(const PedidoApertura& p, const Configuracion& k) {
    const std::string anterior = std::to_string(p.anio - 1);
    return " from ctdquorvel a, ctcquorvel d  where a.empresa=" + sql_numero(p.empresa) +
           " and a.f_comp between #01/01/" + anterior + "# and #12/31/" + anterior + "#" + CUENTAS_BALANCE +
           " and a.centro not in(" + sql_texto(k.centro_per) + "," + sql_texto(k.centro_gan) +
           ") and a.empresa=d.empresa and a.subsistema=d.subsistema and a.f_comp=d.f_comp and "
           "a.documento=d.documento and a.num_docum=d.num_docum  and (d.ifrs is null or d.ifrs in ('0'," +
           sql_texto(p.norma) + "))";
}

std::string saldos_por_auxiliar(const std::string& donde) {
    return "select a.centro,coalesce(a.auxiliar,''),sum(a.debe_nacional) as debe, sum(a.haber_nacional) as "
           "haber " +
           donde + " group by a.centro,coalesce(a.auxiliar,'') order by a.centro, coalesce(a.auxiliar,'') ";
}

/// A line with an auxiliary and no reference of its own belongs to the document of its voucher's header; one
/// without an auxiliary belongs to none. The work table is made with both already decided, which saves the
/// passes over it, and needs no order, its reader sorts.
std::string saldos_por_documento(clsConexion& db, const std::string& donde) {
    db.executesql("drop table temporal "); // missing on the first run
    const std::string sql =
        "select a.centro,a.auxiliar,sum(a.debe_nacional) as debe, sum(a.haber_nacional) as haber, d.num_ref "
        "as "
        "ref1, case when a.auxiliar<>'' and coalesce(a.num_ref,'')='' and d.num_ref<>'' then d.num_ref else "
        "a.num_ref end as ref2 into temporal " +
        donde + " group by a.centro,a.auxiliar, a.num_ref, d.num_ref";
    if (db.executesql(sql) < 1) throw ErrorSesion(db.last_error(), sql);
    return "select centro,coalesce(auxiliar,''),sum(debe) as debe, sum(haber) as haber,coalesce(ref2,'')  "
           "from temporal  group by centro, coalesce(auxiliar,''), coalesce(ref2,'') order by centro, "
           "coalesce(auxiliar,''), coalesce(ref2,'') ";
}

} // namespace

ResultadoAsiento generar_apertura(clsConexion& db, const PedidoApertura& p, const Avance& avance) {
    const Configuracion k = leer_configuracion(db, p.empresa, Fecha{});
    if (!k.existe) return {Rechazo{"Empresa no configurada"}, {}};
    if (!tiene_movimientos(db, p.empresa, p.anio - 1))
        return {Rechazo{"Empresa no tiene movimientos en año " + std::to_string(p.anio - 1)}, {}};

    ArmadorAsiento a(p.glosa);
    const auto fila = [&](Saldo s) {
        const bool deudor = s.debe > s.haber;
        const Decimal saldo = deudor ? s.debe - s.haber : s.haber - s.debe;
        s.debe = deudor ? saldo : Decimal();
        s.haber = deudor ? Decimal() : saldo;
        a.poner(s, saldo > MEDIO_PESO);
    };
    if (avance && !avance(0, 0)) return {{Desenlace::cancelado, CANCELADA}, {}};
    const std::string donde = desde_donde(p, k);
    std::optional<Transaccion> t;
    if (p.por_documento && db.work_tables_end_with_transaction()) t.emplace(db);
    const std::string sql = p.por_documento ? saldos_por_documento(db, donde) : saldos_por_auxiliar(donde);
    if (!recorrer_saldos(db, sql, avance, fila)) return {{Desenlace::cancelado, CANCELADA}, {}};
    const bool perdida = a.haber() > a.debe();
    const std::string& cuenta = perdida ? k.centro_per : k.centro_gan;
    if (auto rechazo = sin_cuenta_resultado(cuenta, perdida)) return {std::move(*rechazo), {}};
    a.poner({cuenta, "", "", perdida ? a.haber() - a.debe() : Decimal(),
             perdida ? Decimal() : a.debe() - a.haber()},
            true);
    return {{}, a.terminar({}, {})};
}

} // namespace quorvel
