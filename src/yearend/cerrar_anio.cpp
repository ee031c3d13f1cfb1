#include "yearend/cerrar_anio.h"

#include "platform/db/literal.h"
#include "text/numeros.h"

namespace quorvel {
namespace {

ResultadoCerrarAnio no(const char* mensaje) {
    ResultadoCerrarAnio r;
    r.rechazo = Rechazo{mensaje, Icono::critico, "", std::nullopt, std::nullopt};
    return r;
}

bool resultados_en_cero(clsConexion& db, int empresa, int anio) {
    const auto rs = db.NewRecord("select sum(a.debe_nacional) as debe, sum(a.haber_nacional) as haber  from "
                                 "ctdquorvel a, ctmcentros b, "
                                 "ctmgcuenta c  where a.empresa=" +
                                 sql_numero(empresa) + " and a.f_comp<=#12/31/" + std::to_string(anio) +
                                 "# and a.centro=b.centro and b.g_cuenta=c.g_cuenta and c.transitorio='1'");
    if (rs->eof()) return true;
    const Value debe = rs->fields("debe").Value, haber = rs->fields("haber").Value;
    return debe.text() == haber.text(); // whole sums of one column type: equal exactly when they read alike
}

std::string insertar_anio(int empresa, int anio, const Configuracion& k) {
    const std::string a = std::to_string(anio);
    std::string sql =
        "insert into ctmconfigu(empresa,anio,f_digi_inicial,f_digi_final, centro_gan, centro_per  , "
        "factura_pagar, boleta_pagar, factura_cobrar, boleta_cobrar , iva, otros_impuestos, iva_compra, "
        "otros_impuestos_compra , honorarios_pagar, retencion_seg_cat) values (" +
        sql_numero(empresa) + "," + a + ",#01/01/" + a + "# ,#12/31/" + a + "# ";
    for (const std::string* cuenta :
         {&k.centro_gan, &k.centro_per, &k.factura_pagar, &k.boleta_pagar, &k.factura_cobrar,
          &k.boleta_cobrar, &k.iva, &k.otros_impuestos, &k.iva_compra, &k.otros_impuestos_compra,
          &k.honorarios_pagar, &k.retencion_seg_cat})
        sql += "," + sql_texto(*cuenta);
    return sql + ")";
}

} // namespace

ResultadoCerrarAnio cerrar_anio_contable(clsConexion& db, int empresa, Fecha hoy) {
    const Configuracion k = leer_configuracion(db, empresa, hoy);
    if (!k.existe) return no("Empresa no configurada");
    if (!k.f_comp_cierre) return no(FALTA_CIERRE); // another screen may have closed the year meanwhile
    if (!resultados_en_cero(db, empresa, k.anio))
        return no("Comprobante de Cierre tiene errores que  descuadran el Balance General");
    const int nuevo = k.anio + 1;
    if (db.executesql(insertar_anio(empresa, nuevo, k)) < 1) return no("Problemas para cerrar el año");
    // The signature captions are no part of the close; without them the new year would print the defaults.
    db.executesql("update ctmconfigu set elaborado=" + sql_texto(k.elaborado) +
                  ", revisado=" + sql_texto(k.revisado) + ", aprobado=" + sql_texto(k.aprobado) +
                  " where empresa=" + sql_numero(empresa) + " and anio=" + sql_numero(nuevo));
    ResultadoCerrarAnio r;
    r.nueva = leer_configuracion(db, empresa, hoy);
    const bool renumerado =
        db.executesql("update adxemp_doc set ultimo_emitido='0' , f_u_emision=" + sql_fecha(hoy) +
                      " where empresa=" + sql_numero(empresa)) >= 1;
    r.mensaje = renumerado ? "Cierre Anual de " + std::to_string(k.anio) + " Completado con éxito"
                           : "Cierre anual completado, problemas al reiniciar numero de documento";
    return r;
}

} // namespace quorvel
