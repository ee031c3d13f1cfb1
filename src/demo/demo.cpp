#include "demo/demo.h"

#include "dbtools/base.h"
#include "dbtools/esquema.h"
#include "demo/demo_negocio.h"
#include "platform/db/clsConexion.h"
#include "platform/db/literal.h"

namespace quorvel::demo {
namespace {

using namespace std::chrono;

constexpr const char* GANANCIA = "302001";
constexpr const char* PERDIDA = "302002";

void configurar(dbtools::Base& base, int anio) {
    const std::string a = std::to_string(anio);
    base.ejecutar(
        "insert into ctmconfigu(empresa,anio,f_digi_inicial,f_digi_final,factura_cobrar,boleta_cobrar,"
        "factura_pagar,boleta_pagar,iva,otros_impuestos,iva_compra,otros_impuestos_compra,honorarios_pagar,"
        "retencion_seg_cat,elaborado,revisado,aprobado,centro_gan,centro_per) values (1," +
        a + ",'" + a + "-01-01','" + a +
        "-12-31','103001','103002','201001','201002','203001','203002','109001','109002','204001','204002',"
        "'Elaborado','Revisado','Aprobado','" +
        GANANCIA + "','" + PERDIDA + "')");
}

AsientoDemo asiento_anual(Fecha fecha, const std::string& concepto) {
    AsientoDemo a;
    a.fecha = fecha;
    a.documento = "001";
    a.libro = "CONTABLES";
    a.doc_libro = " ";
    a.concepto = concepto;
    return a;
}

bool de_resultado(const MaestrosDemo& m, const std::string& centro) {
    return m.transitorio.at(centro.substr(0, 1)) == "1";
}

/// The line that carries the rest to the profit or to the loss account.
void cuadrar(AsientoDemo& a) {
    std::int64_t resto = 0;
    for (const LineaDemo& l : a.lineas) resto += l.debe - l.haber;
    LineaDemo linea;
    linea.centro = resto >= 0 ? GANANCIA : PERDIDA;
    (resto >= 0 ? linea.haber : linea.debe) = resto >= 0 ? resto : -resto;
    a.lineas.push_back(linea);
}

LineaDemo linea_por(const DiarioDemo::Clave& clave, std::int64_t saldo) {
    LineaDemo linea;
    std::tie(linea.centro, linea.auxiliar, linea.num_ref) = clave;
    (saldo > 0 ? linea.debe : linea.haber) = saldo > 0 ? saldo : -saldo;
    return linea;
}

/// Settles the result accounts of a year and records it in the year's configuration.
void cerrar(dbtools::Base& base, DiarioDemo& diario, const MaestrosDemo& m, int anio) {
    AsientoDemo a = asiento_anual(year{anio} / 12 / 31, "CIERRE ANUAL DEL AÑO " + std::to_string(anio));
    for (const auto& [clave, saldo] : diario.saldos())
        if (saldo != 0 && de_resultado(m, std::get<0>(clave))) a.lineas.push_back(linea_por(clave, -saldo));
    cuadrar(a);
    const std::string numero = diario.asentar(a, 1);
    base.ejecutar("update ctmconfigu set f_comp_cierre='" + fecha_iso(a.fecha) +
                  "', documento_cierre='001', num_docum_cierre='" + numero +
                  "' where empresa=1 and anio=" + std::to_string(anio));
}

/// Brings the balances of the closed year, document by document, into the new one.
void abrir(DiarioDemo& diario, const MaestrosDemo& m, int anio) {
    AsientoDemo a = asiento_anual(year{anio} / 1 / 1, "ASIENTO APERTURA " + std::to_string(anio));
    a.apertura = true;
    for (const auto& [clave, saldo] : diario.cerrar_libro()) {
        const std::string& centro = std::get<0>(clave);
        if (saldo != 0 && !de_resultado(m, centro) && centro != GANANCIA && centro != PERDIDA)
            a.lineas.push_back(linea_por(clave, saldo));
    }
    cuadrar(a);
    diario.asentar(a, 1);
}

void numerar(dbtools::Base& base, const DiarioDemo& diario, Fecha hoy) {
    for (const auto& [documento, numero] : diario.ultimos(anio(hoy)))
        base.ejecutar("update adxemp_doc set ultimo_emitido='" + std::to_string(numero) + "', f_u_emision='" +
                      fecha_iso(hoy) + "' where empresa=1 and documento=" + sql_texto(documento));
}

void sembrar(dbtools::Base& base, Fecha hoy) {
    if (base.consultar("select count(*) from admempresa")[0][0] != "0")
        throw ErrorSesion("La base de datos ya contiene una empresa", {});
    const MaestrosDemo m = sembrar_maestros(base);
    const int actual = anio(hoy);
    configurar(base, actual - 1);
    configurar(base, actual);
    DiarioDemo diario(base);
    NegocioDemo negocio(diario, m);
    negocio.aporte_inicial(year{actual - 1} / 1 / 1);
    for (unsigned mes = 1; mes <= 12; ++mes) negocio.mes_de(year{actual - 1} / static_cast<int>(mes), hoy);
    cerrar(base, diario, m, actual - 1);
    abrir(diario, m, actual);
    for (int mes = 1; mes <= ::quorvel::mes(hoy); ++mes) negocio.mes_de(year{actual} / mes, hoy);
    diario.terminar();
    numerar(base, diario, hoy);
}

} // namespace

void crear_demo(const std::string& conexion, Fecha hoy) {
    dbtools::en_transaccion(conexion, [&](dbtools::Base& base) {
        bool con_tablas = false;
        for (const auto& columna : base.columnas()) con_tablas = con_tablas || columna[0] == "ctcquorvel";
        if (!con_tablas) dbtools::crear_esquema(base);
        sembrar(base, hoy);
    });
}

void crear_demo(const std::string& conexion) { crear_demo(conexion, RelojSistema{}.hoy()); }

} // namespace quorvel::demo
