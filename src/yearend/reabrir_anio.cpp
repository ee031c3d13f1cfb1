#include "yearend/reabrir_anio.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/anotar.h"
#include "voucher/cargar.h"
#include "voucher/grabar.h"
#include "voucher/numeracion.h"

namespace quorvel {
namespace {

std::string del_anio(int empresa, int anio) {
    return " where empresa=" + sql_numero(empresa) + " and anio=" + sql_numero(anio);
}

std::string de_comprobantes(int empresa, int anio) {
    const std::string a = std::to_string(anio);
    return " from ctcquorvel where empresa=" + sql_numero(empresa) + " and f_comp>=#01/01/" + a + "#";
}

void quitar(clsConexion& db, const Clave& clave, int usuario, const Proteccion& p, const std::string& grupo) {
    const auto guardado = leer_guardado(db, clave);
    if (!guardado) return;
    exigir_sin_abrir(guardado->c, usuario);
    exigir_mes_abierto(p, guardado->c);
    eliminar_en_transaccion_abierta(db, guardado->c, p,
                                    {.usuario = usuario, .operacion = operacion::ELIMINADO, .grupo = grupo});
}

/// The close began them anew; the open year's own go on.
void renumerar(clsConexion& db, int empresa, int anio, Fecha hoy) {
    std::vector<std::string> documentos;
    for (const auto rs =
             db.NewRecord("select documento from adxemp_doc where empresa=" + sql_numero(empresa));
         !rs->eof(); rs->MoveNext())
        documentos.push_back(rs->at(0).text());
    for (const std::string& d : documentos)
        exigir(db, "update adxemp_doc set ultimo_emitido=" +
                       sql_texto(std::to_string(proponer_numero(db, empresa, d, anio) - 1)) +
                       ", f_u_emision=" + sql_fecha(hoy) + " where empresa=" + sql_numero(empresa) +
                       " and documento=" + sql_texto(d));
}

void reabrir(clsConexion& db, int empresa, int usuario, Fecha hoy) {
    // held until the end: nobody closes or configures meanwhile
    exigir(db, "update ctmconfigu set anio=anio where empresa=" + sql_numero(empresa));
    const Reapertura r = leer_reapertura(db, empresa);
    if (r.anio == 0) throw PasoFallido("No hay un año cerrado que reabrir");
    const Proteccion p = leer_proteccion(db, empresa);
    const std::string grupo = nuevo_grupo();
    if (r.quita_aperturas())
        for (const Clave& k : r.aperturas) quitar(db, k, usuario, p, grupo);
    if (r.cierre) quitar(db, *r.cierre, usuario, p, grupo);
    exigir(db, "delete from ctmconfigu" + del_anio(empresa, r.anio + 1));
    exigir(db, "update ctmconfigu set f_comp_cierre=null, documento_cierre=null, num_docum_cierre=null" +
                   del_anio(empresa, r.anio));
    renumerar(db, empresa, r.anio, hoy);
    if (!p.historia) return;
    Pasos pasos;
    anotar_suceso(pasos, {.empresa = empresa,
                          .usuario = usuario,
                          .operacion = "año reabierto: " + std::to_string(r.anio),
                          .grupo = grupo});
    pasos.ejecutar(db);
}

} // namespace

Reapertura leer_reapertura(clsConexion& db, int empresa) {
    Reapertura r;
    const Configuracion abierto = leer_periodo(db, empresa, Fecha{});
    if (!abierto.existe) return r;
    const auto cerrado =
        db.NewRecord("select f_comp_cierre, documento_cierre, num_docum_cierre from ctmconfigu" +
                     del_anio(empresa, abierto.anio - 1));
    if (cerrado->eof() || cerrado->at(0).null()) return r;
    r.anio = abierto.anio - 1;
    const auto c = leer_cabecera(db, empresa, *cerrado->at(0).date(), recortar_fin(cerrado->at(1).text()),
                                 recortar_fin(cerrado->at(2).text()));
    if (c) r.cierre = c->clave();
    for (const auto rs =
             db.NewRecord("select subsistema, f_comp, documento, num_docum, apertura, estado" +
                          de_comprobantes(empresa, abierto.anio) + " order by f_comp, documento, num_docum");
         !rs->eof(); rs->MoveNext()) {
        if (recortar(rs->at(4).text()) == "1")
            r.aperturas.push_back(
                {empresa, rs->at(0).text(), *rs->at(1).date(), rs->at(2).text(), rs->at(3).text()});
        else
            ++r.otros;
    }
    return r;
}

std::string por_rehacer(const Reapertura& r) {
    std::string texto = "El comprobante de cierre del año " + std::to_string(r.anio) +
                        " (Generar Detalle de Cierre Anual)\r\nEl cierre del año (Cerrar el Año Contable)";
    for (const Clave& k : r.aperturas)
        texto += r.quita_aperturas()
                     ? "\r\nLa apertura: " + nombrar(k)
                     : "\r\nLa apertura: " + nombrar(k) + ", que queda: ábrala y genérela otra vez";
    if (r.otros > 0)
        texto += "\r\nLo que cambió en la configuración del año " + std::to_string(r.anio + 1) +
                 ", que al cerrar se copia otra vez de la del " + std::to_string(r.anio);
    return texto;
}

Desenlace reabrir_anio(clsConexion& db, int empresa, int usuario, Fecha hoy) {
    const int antes = leer_periodo(db, empresa, hoy).anio;
    return en_transaccion(
        db, [&] { reabrir(db, empresa, usuario, hoy); },
        [&] { return leer_periodo(db, empresa, hoy).anio == antes - 1; });
}

} // namespace quorvel
