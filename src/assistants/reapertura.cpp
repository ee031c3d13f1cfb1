#include "assistants/reapertura.h"

#include "assistants/calculo.h"
#include "platform/db/literal.h"
#include "text/numeros.h"
#include "voucher/grabar_sql.h"
#include "voucher/iva.h"

#include <cmath>

namespace quorvel {
namespace {

/// The voucher's stored other-tax line, whatever its side; 0 when there is none.
double otro_guardado(clsConexion& db, const DocumentoAnterior& d) {
    if (!d.clave) return 0;
    const auto rs = db.NewRecord("select * from ctdquorvel" + sql_clave(*d.clave) +
                                 " and centro =" + sql_texto(d.cuenta_otros));
    if (rs->eof()) return 0;
    return rs->fields("debe_nacional").Value.number() + rs->fields("haber_nacional").Value.number();
}

double otro_impuesto(clsConexion& db, const DocumentoAnterior& d, double diferencia) {
    const double tasa = valnumerobase(d.tasa);
    if (!d.otro_en_lineas && tasa != 0) return tasa * d.neto.valor() / 100;
    return std::copysign(d.otro_en_lineas ? *d.otro_en_lineas : otro_guardado(db, d), diferencia);
}

} // namespace

std::optional<Propuesta> proponer_reapertura(clsConexion& db, const DocumentoAnterior& d) {
    if (d.neto + d.exento <= 0) return std::nullopt;
    const double neto = d.neto.valor(), exento = d.exento.valor();
    Propuesta p{mostrar_monto(neto), mostrar_monto(exento), mostrar_monto(iva_de(neto)),
                d.total_debe.formato("#,##0"), "0"};
    const double documento = Round(iva_de(neto)) + neto + exento;
    const double diferencia = d.total_debe.valor() - documento;
    if (std::fabs(diferencia) > 1) p.otro = mostrar_monto(otro_impuesto(db, d, diferencia));
    p.total = mostrar_monto(documento + valnumeroformato(p.otro));
    return p;
}

} // namespace quorvel
