#include "yearend/cerrar_anio.h"

#include "platform/db/literal.h"
#include "voucher/anotar.h"
#include "voucher/pasos.h"
#include "yearend/saldos.h"

namespace quorvel {
namespace {

ResultadoCerrarAnio no(const char* mensaje) { return {Rechazo{mensaje}, {}, {}}; }

bool resultados_en_cero(clsConexion& db, int empresa, int anio) {
    const auto rs = db.NewRecord("select sum(a.debe_nacional) as debe, sum(a.haber_nacional) as haber  from "
                                 "ctdquorvel a  where a.empresa=" +
                                 sql_numero(empresa) + " and a.f_comp<=#12/31/" + std::to_string(anio) + "#" +
                                 CUENTAS_RESULTADO);
    const Value debe = rs->fields("debe").Value, haber = rs->fields("haber").Value;
    return debe.text() == haber.text(); // whole sums of one column type: equal exactly when they read alike
}

/// In the new year's row, in place of a closing's kind, until the numbers have begun anew.
constexpr const char* A_MEDIAS = "---";

/// The signature captions go over as well: without them the new year would print the defaults.
std::string insertar_anio(clsConexion& db, int empresa, int anio, const Configuracion& k) {
    const std::string a = std::to_string(anio);
    std::string sql =
        "insert into ctmconfigu(empresa,anio,f_digi_inicial,f_digi_final, centro_gan, centro_per  , "
        "factura_pagar, boleta_pagar, factura_cobrar, boleta_cobrar , iva, otros_impuestos, iva_compra, "
        "otros_impuestos_compra , honorarios_pagar, retencion_seg_cat, documento_cierre, elaborado, revisado,"
        " aprobado) values (" +
        sql_numero(empresa) + "," + a + ",#01/01/" + a + "# ,#12/31/" + a + "# ";
    for (const std::string* cuenta :
         {&k.centro_gan, &k.centro_per, &k.factura_pagar, &k.boleta_pagar, &k.factura_cobrar,
          &k.boleta_cobrar, &k.iva, &k.otros_impuestos, &k.iva_compra, &k.otros_impuestos_compra,
          &k.honorarios_pagar, &k.retencion_seg_cat})
        sql += "," + sql_texto(*cuenta);
    sql += "," + sql_texto(A_MEDIAS);
    const auto rs = db.NewRecord("select elaborado,revisado,aprobado from ctmconfigu where empresa=" +
                                 sql_numero(empresa) + " and anio=" + sql_numero(k.anio));
    for (std::size_t i = 0; i < 3; ++i) // null stays apart from an empty text
        sql += rs->eof() || rs->at(i).null() ? ",null" : "," + sql_texto(rs->at(i).text());
    return sql + ")";
}

/// A session that lost its connection opens it again at the next statement.
template <class F> bool dos_veces(F&& paso) { return paso() || paso(); }

/// Everything that follows the new year's row; may be run again.
ResultadoCerrarAnio terminar_cierre(clsConexion& db, int empresa, int cerrado, Fecha hoy) {
    ResultadoCerrarAnio r;
    const auto hecho = [&](const std::string& sql) {
        return dos_veces([&] { return db.executesql(sql) >= 1; });
    };
    const std::string e = sql_numero(empresa);
    r.nueva = leer_configuracion(db, empresa, hoy);
    if (!hecho("update adxemp_doc set ultimo_emitido='0' , f_u_emision=" + sql_fecha(hoy) +
               " where empresa=" + e)) {
        r.mensaje = "Cierre anual completado, problemas al reiniciar numero de documento";
        return r;
    }
    (void)hecho("update ctmconfigu set documento_cierre=null where empresa=" + e +
                " and anio=" + sql_numero(cerrado + 1));
    r.mensaje = "Cierre Anual de " + std::to_string(cerrado) + " Completado con éxito";
    return r;
}

/// The answer to the insert may have been lost with the connection: the row itself tells.
bool quedo_abierto(clsConexion& db, int empresa, int anio, Fecha hoy) {
    try {
        return leer_periodo(db, empresa, hoy).anio == anio;
    } catch (const ErrorSesion&) {
        return false; // the next run will find out
    }
}

/// The new year's row, and with it what the history says of it. @return false when it was refused
bool abrir_anio(clsConexion& db, int empresa, int usuario, const Configuracion& k) {
    const std::string sql = insertar_anio(db, empresa, k.anio + 1, k);
    if (!leer_proteccion(db, empresa).historia) return db.executesql(sql) >= 1;
    const Desenlace d = en_transaccion(
        db,
        [&] {
            Pasos pasos;
            pasos.agregar(sql);
            anotar_suceso(pasos, {.empresa = empresa,
                                  .usuario = usuario,
                                  .operacion = "año cerrado: " + std::to_string(k.anio)});
            pasos.ejecutar(db);
        },
        [&] { return leer_periodo(db, empresa, Fecha{}).anio == k.anio + 1; });
    return d.como == Desenlace::hecho;
}

} // namespace

ResultadoCerrarAnio cerrar_anio_contable(clsConexion& db, int empresa, Fecha hoy,
                                         const std::function<bool()>& sigue, int usuario) {
    const Configuracion k = leer_configuracion(db, empresa, hoy);
    if (!k.existe) return no("Empresa no configurada");
    if (!k.f_comp_cierre) return no(FALTA_CIERRE); // another screen may have closed the year meanwhile
    bool en_cero = false;
    if (!interruptible(db, sigue, [&] { en_cero = resultados_en_cero(db, empresa, k.anio); })) {
        return {{Desenlace::cancelado, CANCELADA}, {}, {}};
    }
    if (!en_cero) return no("Comprobante de Cierre tiene errores que  descuadran el Balance General");
    const int nuevo = k.anio + 1;
    if (!abrir_anio(db, empresa, usuario, k) && !quedo_abierto(db, empresa, nuevo, hoy))
        return no("Problemas para cerrar el año");
    return terminar_cierre(db, empresa, k.anio, hoy);
}

std::optional<ResultadoCerrarAnio> completar_cierre_anio(clsConexion& db, int empresa, Fecha hoy) {
    const Configuracion k = leer_periodo(db, empresa, hoy);
    const std::string de_empresa = " where empresa=" + sql_numero(empresa), anio = std::to_string(k.anio);
    const bool a_medias = has_rows(db, "select anio from ctmconfigu" + de_empresa + " and anio=" + anio +
                                           " and documento_cierre=" + sql_texto(A_MEDIAS));
    if (!a_medias || has_rows(db, "select top 1 empresa from ctcquorvel" + de_empresa +
                                      " and f_comp>=#01/01/" + anio + "#"))
        return std::nullopt;
    return terminar_cierre(db, empresa, k.anio - 1, hoy);
}

} // namespace quorvel
