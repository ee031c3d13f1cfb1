#include "assistants/reapertura.h"

#include "assistants/calculo.h"
#include "platform/db/literal.h"
#include "text/numeros.h"
#include "voucher/iva.h"

#include <cmath>

namespace quorvel {
namespace {

/// The voucher's stored other-tax line, whatever its side; 0 when there is none.
double otro_guardado(clsConexion& db, const DocumentoAnterior& d) {
    if (!d.clave) return 0;
    const auto rs = db.NewRecord(
        "select * from ctdquorvel where empresa=" + sql_numero(d.clave->empresa) +
        " and   subsistema=" + sql_texto(d.clave->subsistema) +
        " and   f_comp=" + sql_fecha(d.clave->f_comp) + " and   documento=" + sql_texto(d.clave->documento) +
        " and   num_docum=" + sql_texto(d.clave->num_docum) + " and centro =" + sql_texto(d.cuenta_otros));
    if (rs->eof()) return 0;
    return rs->fields("debe_nacional").Value.number() + rs->fields("haber_nacional").Value.number();
}

double otro_impuesto(clsConexion& db, const DocumentoAnterior& d, double diferencia) {
    const double tasa = valnumerobase(d.tasa);
    if (!d.otro_en_lineas && tasa != 0) return tasa * d.neto / 100;
    return std::copysign(d.otro_en_lineas ? *d.otro_en_lineas : otro_guardado(db, d), diferencia);
}

} // namespace

std::optional<Propuesta> proponer_reapertura(clsConexion& db, const DocumentoAnterior& d) {
    if (!(d.neto + d.exento > 0)) return std::nullopt;
    Propuesta p{mostrar_monto(d.neto), mostrar_monto(d.exento), mostrar_monto(iva_de(d.neto)), d.total_debe,
                "0"};
    const double documento = Round(iva_de(d.neto)) + d.neto + d.exento;
    const double diferencia = valnumeroformato(d.total_debe) - documento;
    if (std::fabs(diferencia) > 1) p.otro = mostrar_monto(otro_impuesto(db, d, diferencia));
    p.total = mostrar_monto(documento + valnumeroformato(p.otro));
    return p;
}

} // namespace quorvel
