#include "apoyo/empresa.h"

#include "dbtools/esquema.h"

#include <map>
#include <stdexcept>

namespace quorvel {
namespace {

constexpr const char* SENTENCIAS[] = {
    "insert into admempresa(empresa,n_empresa,rut) values (1,'Empresa de Prueba Ltda.','76.111.222-8')",
    "insert into admusuario(usuario,n_usuario,alias,permiso) values (1,'ana',1,'11111')",
    "insert into admusuario(usuario,n_usuario,alias,permiso) values (2,'luis',2,'11111')",
    "insert into admpersona(persona,n_persona,cedula_ruc) values (1,'ANA ROJAS','9.876.543-3')",
    "insert into admpersona(persona,n_persona,cedula_ruc) values (2,'LUIS O''HIGGINS','8.765.432-K')",

    "insert into "
    "ctmconfigu(empresa,anio,f_digi_inicial,f_digi_final,factura_cobrar,boleta_cobrar,factura_pagar,"
    "boleta_pagar,iva,otros_impuestos,iva_compra,otros_impuestos_compra,honorarios_pagar,retencion_seg_cat,"
    "elaborado,revisado,aprobado,centro_gan,centro_per) values "
    "(1,2024,#01/01/2024#,#12/31/2024#,'103001','103002',"
    "'201001','201002','203001','203002','109001','109002','204001','204002','Elaborado','Revisado','"
    "Aprobado',"
    "'302001','302002')",

    "insert into admsubsist(subsistema,n_subsistema) values ('01','CONTABILIDAD')",
    "insert into admsubsist(subsistema,n_subsistema) values ('02','REMUNERACIONES')",
    "insert into admdocumen(documento,n_documento) values ('001','TRASPASO')",
    "insert into admdocumen(documento,n_documento) values ('002','COMPRA')",
    "insert into admdocumen(documento,n_documento) values ('006','EGRESO')",
    "insert into admdocumen(documento,n_documento) values ('007','INGRESO')",
    "insert into adxdoc_sub(subsistema,documento) values ('01','001')",
    "insert into adxdoc_sub(subsistema,documento) values ('01','002')",
    "insert into adxemp_doc(empresa,documento,ultimo_emitido) values (1,'001','0')",
    "insert into adxemp_doc(empresa,documento,ultimo_emitido) values (1,'002','0')",
    "insert into admmonedas(moneda,n_moneda) values ('PS','PESO')",
    "insert into admmonedas(moneda,n_moneda) values ('US','DOLAR')",
    "insert into ctmotroimp(otro_impuesto,descripcion,tasa) values ('024','LICORES',31.5)",
    "insert into ctmotroimp(otro_impuesto,descripcion,tasa) values ('025','VINOS',20.5)",
    "insert into ctmotroimp(otro_impuesto,descripcion,tasa) values ('027','BEBIDAS ANALCOHOLICAS',10)",

    "insert into ctmtipoaux(tipo_aux,n_tipo_aux,sistema,activo) values ('CL','CLIENTES','0','1')",
    "insert into ctmtipoaux(tipo_aux,n_tipo_aux,sistema,activo) values ('PR','PROVEEDORES','0','1')",
    "insert into ctxaux_cod(auxiliar,n_auxiliar,tipo,activo,rut) values "
    "('000012','JUAN PEREZ SOTO','CL','1','12.345.678-5')",
    "insert into ctxaux_cod(auxiliar,n_auxiliar,tipo,activo,rut) values "
    "('000013','FERRETERIA EL ROBLE SPA','PR','1','76.418.352-5')",
    "insert into ctxaux_cod(auxiliar,n_auxiliar,tipo,activo,rut) values "
    "('000014','MARIA NUÑEZ DIAZ','PS','1','11.111.111-1')",
    "insert into ctxaux_cod(auxiliar,n_auxiliar,tipo,activo,rut) values "
    "('000099','CLIENTE ANTIGUO','CL','0','22.222.222-2')",
};

struct Grupo {
    const char *codigo, *nombre, *transitorio;
};
constexpr Grupo GRUPOS[] = {
    {"1", "ACTIVO", "0"},   {"2", "PASIVO", "0"}, {"3", "PATRIMONIO", "0"},
    {"4", "INGRESOS", "1"}, {"5", "GASTOS", "1"},
};

struct Cuenta {
    const char *codigo, *nombre, *auxiliar, *activo;
};
constexpr Cuenta CUENTAS[] = {
    {"101001", "CAJA", "0", "1"},
    {"101002", "BANCO", "0", "1"},
    {"103001", "CLIENTES", "1", "1"},
    {"103002", "BOLETAS POR COBRAR", "0", "1"},
    {"109001", "IVA CREDITO", "0", "1"},
    {"109002", "OTROS IMP. COMPRA", "0", "1"},
    {"201001", "PROVEEDORES", "1", "1"},
    {"201002", "BOLETAS POR PAGAR", "0", "1"},
    {"203001", "IVA DEBITO", "0", "1"},
    {"203002", "OTROS IMP. VENTA", "0", "1"},
    {"204001", "HONORARIOS POR PAGAR", "1", "1"},
    {"204002", "RETENCION 2DA CATEGORIA", "0", "1"},
    {"301001", "CAPITAL", "0", "1"},
    {"302001", "UTILIDAD", "0", "1"},
    {"302002", "PERDIDA", "0", "1"},
    {"303001", "RETIROS SOCIOS", "1", "1"},
    {"401001", "VENTAS", "0", "1"},
    {"501001", "GASTOS GENERALES", "0", "1"},
    {"501002", "COMPRAS", "0", "1"},
    {"501009", "GASTO DISCONTINUADO", "0", "0"},
};

void ejecutar(clsConexion& db, const std::string& sql) {
    if (db.executesql(sql) < 1) throw std::runtime_error(sql + ": " + db.last_error());
}

void insertar_grupo(clsConexion& db, const std::string& tabla, const Grupo& g) {
    ejecutar(db, "insert into " + tabla +
                     "(g_cuenta,n_g_cuenta,transitorio,formato_centro,num_nivel,longitud) values ('" +
                     g.codigo + "','" + g.nombre + "','" + g.transitorio + "','9.99.999',3,6)");
}

void insertar_cuenta(clsConexion& db, const std::string& tabla, const Cuenta& c) {
    ejecutar(db, "insert into " + tabla + "(centro,n_centro,g_cuenta,activo,req_auxiliar) values ('" +
                     c.codigo + "','" + c.nombre + "','" + c.codigo[0] + "','" + c.activo + "','" +
                     c.auxiliar + "')");
}

} // namespace

void sembrar_empresa(clsConexion& db) {
    for (const char* sql : SENTENCIAS) ejecutar(db, sql);
    for (const Grupo& g : GRUPOS) insertar_grupo(db, "ctmgcuenta", g);
    for (const Cuenta& c : CUENTAS) insertar_cuenta(db, "ctmcentros", c);
    insertar_grupo(db, "ctmgcuentc", {"1", "ADMINISTRACION", "0"});
    insertar_grupo(db, "ctmgcuentc", {"2", "VENTAS", "0"});
    insertar_cuenta(db, "ctmcentroc", {"101001", "GERENCIA", "0", "1"});
    insertar_cuenta(db, "ctmcentroc", {"201001", "LOCAL CENTRO", "0", "1"});
    insertar_cuenta(db, "ctmcentroc", {"201002", "LOCAL CERRADO", "0", "0"});
}

namespace apoyo {

std::unique_ptr<clsConexion> crear_base(Motor motor) {
    const std::string conexion = conexion_nueva(motor);
    dbtools::crear_esquema(conexion);
    return abrir_sesion(conexion);
}

std::string conexion_empresa(Motor motor) {
    static std::map<Motor, std::string> modelos;
    std::string& modelo = modelos[motor];
    if (modelo.empty()) {
        modelo = conexion_nueva(motor);
        dbtools::crear_esquema(modelo);
        sembrar_empresa(*abrir_sesion(modelo));
    }
    return copia_de(modelo);
}

std::unique_ptr<clsConexion> crear_empresa(Motor motor) { return abrir_sesion(conexion_empresa(motor)); }

} // namespace apoyo
} // namespace quorvel
