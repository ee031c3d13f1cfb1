#include "voucher/configuracion.h"

#include "platform/db/literal.h"
#include "voucher/chart.h"

#include <stdexcept>

namespace quorvel {
namespace {

constexpr std::pair<const char*, std::string Configuracion::*> CUENTAS[] = {
    {"factura_cobrar", &Configuracion::factura_cobrar},
    {"boleta_cobrar", &Configuracion::boleta_cobrar},
    {"factura_pagar", &Configuracion::factura_pagar},
    {"boleta_pagar", &Configuracion::boleta_pagar},
    {"iva", &Configuracion::iva},
    {"otros_impuestos", &Configuracion::otros_impuestos},
    {"iva_compra", &Configuracion::iva_compra},
    {"otros_impuestos_compra", &Configuracion::otros_impuestos_compra},
    {"honorarios_pagar", &Configuracion::honorarios_pagar},
    {"retencion_seg_cat", &Configuracion::retencion_seg_cat},
    {"centro_gan", &Configuracion::centro_gan},
    {"centro_per", &Configuracion::centro_per},
};
constexpr std::array CONSULTAS_MAESTROS{
    "select * from ctmcentros a, ctmgcuenta b  where a.g_cuenta=b.g_cuenta and a.activo='1'",
    "select * from ctmcentroc a, ctmgcuentc b  where a.g_cuenta=b.g_cuenta and a.activo='1'",
    "select * from ctxaux_cod a  where a.activo='1'",
    "select * from admsubsist ",
    "select * from ctmotroimp ",
    "select * from admpersona ",
};
struct Requisito {
    std::string Configuracion::*cuenta;
    std::string Configuracion::*requiere;
};
constexpr Requisito REQUISITOS[] = {
    {&Configuracion::factura_cobrar, &Configuracion::req_factura_cobrar},
    {&Configuracion::boleta_cobrar, &Configuracion::req_boleta_cobrar},
    {&Configuracion::factura_pagar, &Configuracion::req_factura_pagar},
    {&Configuracion::boleta_pagar, &Configuracion::req_boleta_pagar},
    {&Configuracion::honorarios_pagar, &Configuracion::req_honorarios_pagar},
};

std::unique_ptr<Recordset> abrir(clsConexion& db, int empresa) {
    const std::string e = sql_numero(empresa);
    return db.NewRecord("select * from ctmconfigu where empresa=" + e +
                        " and anio in (select max(anio) from ctmconfigu where empresa=" + e + ")");
}

void leer_periodo(Recordset& rs, Configuracion& k, Fecha hoy) {
    const auto valor = [&](const char* columna) { return rs.fields(columna).Value; };
    k.existe = true;
    k.f_digi_inicial = valor("f_digi_inicial").date();
    k.inicial_es_hoy = valor("f_digi_inicial").null();
    k.f_digi_final = valor("f_digi_final").date();
    k.final_es_hoy = valor("f_digi_final").null();
    k.anio = valor("anio").null() ? anio(hoy) : static_cast<int>(valor("anio").integer());
    k.f_comp_cierre = valor("f_comp_cierre").date();
    if (!k.f_comp_cierre) return;
    k.documento_cierre = valor("documento_cierre").text();
    k.num_docum_cierre = valor("num_docum_cierre").text();
}

std::string columnas_periodo(const std::string& tabla) {
    std::string lista;
    for (const char* columna :
         {"anio", "f_digi_inicial", "f_digi_final", "f_comp_cierre", "documento_cierre", "num_docum_cierre"})
        lista += (lista.empty() ? "" : ", ") + tabla + columna;
    return lista;
}

} // namespace

Configuracion leer_periodo(clsConexion& db, int empresa, Fecha hoy) {
    Configuracion k;
    const auto rs = db.NewRecord("select top 1 " + columnas_periodo("") + " from ctmconfigu where empresa=" +
                                 sql_numero(empresa) + " order by anio desc");
    if (!rs->eof()) leer_periodo(*rs, k, hoy);
    return k;
}

std::pair<Configuracion, Proteccion> leer_periodo_protegido(clsConexion& db, int empresa, Fecha hoy) {
    if (!db.has_table("ctmhistoria")) return {leer_periodo(db, empresa, hoy), {}};
    std::pair<Configuracion, Proteccion> todo;
    const auto rs = db.NewRecord("select top 1 " + columnas_periodo("k.") +
                                 ", h.guarda, h.cerrado, h.meses from ctmconfigu k left join ctmhistoria h on"
                                 " h.empresa=k.empresa where k.empresa=" +
                                 sql_numero(empresa) + " order by k.anio desc");
    if (rs->eof()) return {Configuracion{}, leer_proteccion(db, empresa)};
    leer_periodo(*rs, todo.first, hoy);
    todo.second = leer_proteccion(*rs);
    return todo;
}

Configuracion leer_configuracion(clsConexion& db, int empresa, Fecha hoy) {
    Configuracion k;
    const auto rs = abrir(db, empresa);
    if (rs->eof()) return k;
    leer_periodo(*rs, k, hoy);
    for (const auto& [columna, miembro] : CUENTAS) k.*miembro = rs->fields(columna).Value.text();
    for (const Requisito& r : REQUISITOS) k.*r.requiere = req_aux(db, k.*r.cuenta);
    const auto leyenda = [&](const char* columna, const char* nula) {
        const Value v = rs->fields(columna).Value;
        return v.null() ? std::string(nula) : v.text();
    };
    k.elaborado = leyenda("elaborado", "Elaborado");
    k.revisado = leyenda("revisado", "Revisado");
    k.aprobado = leyenda("aprobado", "Aprobado");
    return k;
}

std::string req_aux(clsConexion& db, const std::string& cuenta) {
    if (cuenta.empty()) return "0";
    const auto rs = db.NewRecord("select req_auxiliar from ctmcentros where centro=" + sql_texto(cuenta));
    return !rs->eof() && exige_auxiliar(rs->fields("req_auxiliar").Value) ? "1" : "0";
}

void Maestros::usar(clsConexion& db) {
    if (db_ == &db) return;
    abiertos_ = {};
    db_ = &db;
}

void Maestros::reabrir(Maestro m) {
    if (db_ == nullptr) throw std::logic_error("La pantalla no tiene una base de datos abierta");
    const auto i = static_cast<std::size_t>(m);
    abiertos_[i] = db_->NewRecord(CONSULTAS_MAESTROS[i]);
}

void Maestros::reabrir(clsConexion& db, bool todos) {
    usar(db);
    for (const Maestro m : {Maestro::cuentas, Maestro::centros, Maestro::auxiliares}) reabrir(m);
    if (!todos) return;
    for (const Maestro m : {Maestro::subsistemas, Maestro::otros_impuestos, Maestro::personas}) reabrir(m);
}

Recordset& Maestros::operator[](Maestro m) {
    if (!abierto(m)) reabrir(m);
    return *abiertos_[static_cast<std::size_t>(m)];
}

} // namespace quorvel
