#include "yearend/saldos.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel {
namespace {

constexpr long CADA = 500;

} // namespace

bool tiene_movimientos(clsConexion& db, int empresa, int anio) {
    const std::string a = std::to_string(anio);
    return !db.NewRecord("select top 1 a.empresa from ctdquorvel a where a.empresa=" + sql_numero(empresa) +
                         " and a.f_comp between #01/01/" + a + "# and #12/31/" + a + "#")
                ->eof();
}

bool recorrer_saldos(clsConexion& db, const std::string& sql, const Avance& avance,
                     const std::function<void(const Saldo&)>& fila) {
    if (avance && !avance(0, 0)) return false;
    long n = 0;
    for (const auto rs = db.NewRecord(sql); !rs->eof(); rs->MoveNext()) {
        const bool con_ref = rs->columns().size() > 4;
        const auto texto = [&](std::size_t i) { return recortar_fin(rs->at(i).text()); };
        fila({texto(0), texto(1), con_ref ? texto(4) : "", rs->at(2).decimal(), rs->at(3).decimal()});
        if (++n % CADA == 0 && avance && !avance(n, 0)) return false;
    }
    return true;
}

ArmadorAsiento::ArmadorAsiento(const std::string& glosa) : glosa_(primeros(glosa, LARGO_GLOSA)) {}

void ArmadorAsiento::poner(const Saldo& s, bool con_linea) {
    ++contador_;
    debe_ = debe_ + s.debe;
    haber_ = haber_ + s.haber;
    if (!con_linea) return;
    LineaNumerada n{contador_, {}};
    n.linea.centro = s.centro;
    n.linea.auxiliar = s.auxiliar;
    n.linea.debe = s.debe.redondeado();
    n.linea.haber = s.haber.redondeado();
    n.linea.glosa = glosa_;
    n.linea.num_ref = s.ref;
    asiento_.lineas.push_back(std::move(n));
}

AsientoGenerado ArmadorAsiento::terminar(Decimal desde_debe, Decimal desde_haber) {
    asiento_.totales = {desde_debe + debe_, desde_haber + haber_};
    return std::move(asiento_);
}

std::optional<Rechazo> sin_cuenta_resultado(const std::string& cuenta, bool perdida) {
    if (!recortar(cuenta).empty()) return std::nullopt;
    return Rechazo{std::string("La cuenta de ") + (perdida ? "pérdida" : "utilidad") +
                   " no esta configurada. Configure la contabilidad antes de generar el comprobante"};
}

} // namespace quorvel
