#include "empresa/empresa.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/rut.h"

namespace quorvel {
namespace {

constexpr int MAYOR_CODIGO = 32767; // the session hands the company over as a 16-bit number

void exigir(clsConexion& db, const std::string& sql) {
    if (db.executesql(sql) < 1) throw ErrorSesion(db.last_error(), sql);
}

struct TablaCodigos {
    const char *nombre, *columnas, *clave;
    bool con_valor;
};
constexpr TablaCodigos TABLAS[] = {
    {"admsubsist", "subsistema,n_subsistema", "subsistema", false},
    {"admmonedas", "moneda,n_moneda", "moneda", false},
    {"ctmtipoaux", "tipo_aux,n_tipo_aux,sistema", "tipo_aux", true},
    {"ctmotroimp", "otro_impuesto,descripcion,tasa", "otro_impuesto", true},
    {"admdocumen", "documento,n_documento", "documento", false},
};

/// A table with rows of its own keeps them; an empty one gets the usual codes.
void sembrar_codigos(clsConexion& db, const std::vector<CodigoBase>& codigos) {
    for (const TablaCodigos& t : TABLAS) {
        if (has_rows(db, std::string("select top 1 ") + t.clave + " from " + t.nombre)) continue;
        for (const CodigoBase& c : codigos) {
            if (c.size() < 4 || c[0] != t.nombre) continue;
            exigir(db, std::string("insert into ") + t.nombre + "(" + t.columnas + ") values (" +
                           sql_texto(c[1]) + "," + sql_texto(c[2]) +
                           (t.con_valor ? "," + sql_texto(c[3]) : "") + ")");
            if (c[0] == "admdocumen" && !c[3].empty())
                exigir(db, "insert into adxdoc_sub(subsistema,documento) values (" + sql_texto(c[3]) + "," +
                               sql_texto(c[1]) + ")");
        }
    }
}

void numerar_documentos(clsConexion& db, int empresa) {
    std::vector<std::string> documentos;
    for (const auto rs = db.NewRecord("select documento from admdocumen"); !rs->eof(); rs->MoveNext())
        documentos.push_back(rs->at(0).text());
    for (const std::string& d : documentos)
        exigir(db, "insert into adxemp_doc(empresa,documento,ultimo_emitido) values (" + sql_numero(empresa) +
                       "," + sql_texto(d) + ",'0')");
}

void sembrar_usuario(clsConexion& db, const std::string& nombre) {
    if (has_rows(db, "select top 1 usuario from admusuario")) return;
    exigir(db, "insert into admusuario(usuario,n_usuario,alias,permiso) values (1," + sql_texto(nombre) +
                   ",1,'11111')");
    if (!has_rows(db, "select persona from admpersona where persona=1"))
        exigir(db, "insert into admpersona(persona,n_persona,tipo,activo) values (1," + sql_texto(nombre) +
                       ",'N','1')");
}

/// The last company's accounts serve a new one on the same chart; a chart of its own tells its uses.
std::map<std::string, std::string> cuentas_de(clsConexion& db, const EmpresaNueva& e) {
    std::map<std::string, std::string> cuentas;
    if (e.plan) {
        for (const CuentaPlan& c : e.plan->cuentas)
            if (!c.uso.empty()) cuentas[c.uso] = c.codigo;
        return cuentas;
    }
    const auto rs = db.NewRecord("select top 1 empresa, anio from ctmconfigu order by anio desc, empresa");
    if (rs->eof()) return cuentas;
    const auto otra = leer_configuracion_anual(db, static_cast<int>(rs->at(0).integer()),
                                               static_cast<int>(rs->at(1).integer()));
    return otra ? otra->cuentas : cuentas;
}

} // namespace

std::vector<Observacion> revisar_empresa(clsConexion& db, const EmpresaNueva& e) {
    std::vector<Observacion> o;
    if (e.codigo < 1 || e.codigo > MAYOR_CODIGO)
        o.push_back({"codigo", "El código va de 1 a 32767"});
    else if (has_rows(db, "select empresa from admempresa where empresa=" + sql_numero(e.codigo)))
        o.push_back({"codigo", "Ya existe la empresa " + std::to_string(e.codigo)});
    if (recortar(e.nombre).empty()) o.push_back({"nombre", "Falta el nombre"});
    const auto rut = validarut(con_guion(recortar(e.rut)));
    if (recortar(e.rut).empty())
        o.push_back({"rut", "Falta el RUT"});
    else if (!rut.valido)
        o.push_back({"rut", rut.mensaje});
    if (e.anio < 1990 || e.anio > 2100) o.push_back({"anio", "El año va de 1990 a 2100"});
    if (!e.desde) o.push_back({"desde", "Falta la fecha inicial"});
    if (!e.hasta) o.push_back({"hasta", "Falta la fecha final"});
    ConfiguracionAnual c;
    c.anio = e.anio;
    c.f_digi_inicial = e.desde;
    c.f_digi_final = e.hasta;
    for (Observacion& x : revisar_configuracion(db, c))
        if (x.campo.starts_with("f_digi_"))
            o.push_back({x.campo == "f_digi_inicial" ? "desde" : "hasta", x.mensaje});
    if (!e.plan && contar_cuentas(db) == 0) o.push_back({"plan", "La base no tiene plan de cuentas"});
    if (e.plan) {
        for (const ErrorPlan& x : e.plan->errores) o.push_back({"plan", x.texto()});
        for (const ErrorPlan& x : comparar_plan(db, *e.plan)) o.push_back({"plan", x.texto()});
    }
    if (recortar(e.usuario).empty() && !has_rows(db, "select top 1 usuario from admusuario"))
        o.push_back({"usuario", "Falta el nombre del usuario"});
    return o;
}

void crear_empresa(clsConexion& db, const EmpresaNueva& e, const std::vector<CodigoBase>& codigos) {
    Transaccion t{db};
    exigir(db, "insert into admempresa(empresa,n_empresa,rut,direccion,giro) values (" +
                   sql_numero(e.codigo) + "," + sql_texto(recortar(e.nombre)) + "," +
                   sql_texto(validarut(con_guion(recortar(e.rut))).texto) + "," +
                   sql_texto(recortar(e.direccion)) + "," + sql_texto(recortar(e.giro)) + ")");
    ConfiguracionAnual c;
    c.empresa = e.codigo;
    c.anio = e.anio;
    c.f_digi_inicial = e.desde;
    c.f_digi_final = e.hasta;
    c.cuentas = cuentas_de(db, e);
    if (e.plan) agregar_plan(db, *e.plan);
    sembrar_codigos(db, codigos);
    numerar_documentos(db, e.codigo);
    sembrar_usuario(db, recortar(e.usuario));
    grabar_configuracion(db, c);
    t.confirmar();
}

int proponer_codigo_empresa(clsConexion& db) {
    int codigo = 1;
    for (const auto rs = db.NewRecord("select empresa from admempresa order by empresa"); !rs->eof();
         rs->MoveNext())
        if (rs->at(0).integer() == codigo) ++codigo;
    return codigo;
}

std::int64_t contar_cuentas(clsConexion& db) {
    return db.NewRecord("select count(*) as n from ctmcentros")->at(0).integer();
}

} // namespace quorvel
