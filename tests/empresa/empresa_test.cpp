// Goal: a company comes into being whole or not at all, from a template or a file whose every error is told,
// and its configuration says what a save would refuse. Method: both engines, charts written here.
#include "apoyo/comprobante.h"
#include "apoyo/empresa.h"
#include "dbtools/datos.h"
#include "empresa/empresa.h"
#include "voucher/configuracion.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

std::string todos(const std::vector<ErrorPlan>& errores) {
    std::string texto;
    for (const ErrorPlan& e : errores) texto += e.texto() + "\n";
    return texto;
}
std::string todas(const std::vector<Observacion>& observaciones) {
    std::string texto;
    for (const Observacion& o : observaciones) texto += o.campo + (o.grave ? "! " : "  ") + o.mensaje + "\n";
    return texto;
}
EmpresaNueva nueva(int codigo = 7) {
    EmpresaNueva e;
    e.codigo = codigo;
    e.nombre = "Panadería O'Higgins; Ñuñoa";
    e.rut = "76854320-8";
    e.anio = 2024;
    e.desde = fecha(2024, 1, 1);
    e.hasta = fecha(2024, 12, 31);
    e.usuario = "ANA";
    return e;
}
std::vector<CodigoBase> codigos() { return dbtools::leer_tabla("plan/codigos.csv"); }

class Empresas : public ::testing::TestWithParam<Motor> {};
INSTANTIATE_TEST_SUITE_P(Motores, Empresas, ::testing::ValuesIn(MOTORES),
                         [](const auto& m) { return nombre(m.param); });

TEST_P(Empresas, FromTheTemplateInAnEmptyDatabase) {
    const auto db = crear_base(GetParam());
    EmpresaNueva e = nueva(1);
    EXPECT_EQ(proponer_codigo_empresa(*db), 1);
    EXPECT_EQ(todas(revisar_empresa(*db, e)), "plan! La base no tiene plan de cuentas\n");
    e.plan = leer_plan(dbtools::leer_dato("plan/plan_general.csv"));
    EXPECT_EQ(todos(e.plan->errores), "");
    EXPECT_EQ(todas(revisar_empresa(*db, e)), "");
    e.usuario = " ";
    EXPECT_EQ(todas(revisar_empresa(*db, e)), "usuario! Falta el nombre del usuario\n");
    e.usuario = " ANA ";
    auto base = codigos();
    base.push_back({"admdocumen", "090", "SIN SUBSISTEMA", ""});
    base.push_back({"admmonedas", "ZZ"}); // a line that is cut off
    crear_empresa(*db, e, base);
    EXPECT_EQ(filas(*db, "select n_empresa,rut from admempresa"), "Panadería O'Higgins; Ñuñoa|76.854.320-8");
    EXPECT_EQ(filas(*db, "select moneda,n_moneda from admmonedas order by moneda"),
              "PS|PESO;UF|UNIDAD DE FOMENTO;US|DOLAR");
    EXPECT_EQ(filas(*db, "select tipo_aux,n_tipo_aux,sistema from ctmtipoaux where tipo_aux='PS'"),
              "PS|PERSONAS NATURALES Y JURIDICAS|0");
    EXPECT_EQ(filas(*db, "select usuario,n_usuario,alias,permiso from admusuario"), "1|ANA|1|11111");
    EXPECT_EQ(filas(*db, "select persona,n_persona,tipo,activo from admpersona"), "1|ANA|N|1");
    EXPECT_EQ(filas(*db, "select f_digi_inicial,f_digi_final from ctmconfigu"), "2024-01-01|2024-12-31");
    EXPECT_EQ(contar_cuentas(*db), static_cast<std::int64_t>(e.plan->cuentas.size()));
    EXPECT_EQ(filas(*db, "select formato_centro,num_nivel,longitud from ctmgcuenta where g_cuenta='5'"),
              "9.99.999|3|6");
    EXPECT_EQ(
        filas(*db, "select activo from ctmcentros where centro in ('1','101','101001') order by centro"),
        "0;0;1");
    // every account that a save asks for is there: a voucher can be written at once
    const auto c = leer_configuracion_anual(*db, 1, 2024);
    ASSERT_TRUE(c);
    EXPECT_EQ(todas(revisar_configuracion(*db, *c)), "");
    const Configuracion k = leer_configuracion(*db, 1, fecha(2024, 6, 1));
    EXPECT_EQ(k.factura_cobrar + k.req_factura_cobrar + " " + k.iva + " " + k.centro_gan,
              "1020011 202001 302001");
    EXPECT_EQ(filas(*db, "select documento from adxemp_doc where empresa=1 order by documento"),
              "001;002;003;004;005;006;007;090");
    EXPECT_EQ(filas(*db, "select subsistema,documento from adxdoc_sub order by documento"),
              "01|001;01|002;01|003;01|004;01|005;01|006;01|007")
        << "income and egress too";
    EXPECT_EQ(proponer_codigo_empresa(*db), 2);
    ejecutar(*db, "insert into ctmconfigu(empresa,anio,iva) values (1,2023,'x')");
    // the next company takes the chart and the last accounts of the first
    EmpresaNueva otra = nueva(2);
    EXPECT_EQ(todas(revisar_empresa(*db, otra)), "");
    crear_empresa(*db, otra, codigos());
    EXPECT_EQ(leer_configuracion_anual(*db, 2, 2024)->cuentas, c->cuentas);
    EXPECT_EQ(filas(*db, "select count(*) from admusuario"), "1");
    ejecutar(*db, "delete from ctmconfigu");
    ejecutar(*db, "delete from admusuario");
    ejecutar(*db, "delete from admempresa where empresa=1");
    ejecutar(*db, "update admpersona set n_persona='EVA'");
    EXPECT_EQ(proponer_codigo_empresa(*db), 1);
    crear_empresa(*db, nueva(3), {});
    EXPECT_EQ(filas(*db, "select empresa,iva from ctmconfigu"), "3|") << "nobody's accounts to take";
    EXPECT_EQ(filas(*db, "select n_persona from admpersona"), "EVA") << "a person who is there stays";
}

TEST_P(Empresas, WhatANewOneLacks) {
    const auto db = crear_empresa(GetParam());
    const struct {
        void (*cambio)(EmpresaNueva&);
        const char* dicho;
    } casos[] = {
        {[](EmpresaNueva&) {}, ""},
        {[](EmpresaNueva& e) { e.usuario = ""; }, ""}, // there are users
        {[](EmpresaNueva& e) { e.codigo = 0; }, "codigo! El código va de 1 a 32767\n"},
        {[](EmpresaNueva& e) { e.codigo = 32767; }, ""},
        {[](EmpresaNueva& e) { e.codigo = 32768; }, "codigo! El código va de 1 a 32767\n"},
        {[](EmpresaNueva& e) { e.rut = " "; }, "rut! Falta el RUT\n"},
        {[](EmpresaNueva& e) { e.desde = std::nullopt; }, "desde! Falta la fecha inicial\n"},
        {[](EmpresaNueva& e) { std::swap(e.desde, e.hasta); },
         "hasta! El período termina antes de empezar\n"},
        {[](EmpresaNueva& e) { e.hasta = fecha(2025, 1, 1); }, "hasta! La fecha debe ser del año 2024\n"},
        {[](EmpresaNueva& e) { e.plan = leer_plan("cuenta;nombre;tipo\n6;;activo\n"); },
         "plan! línea 2, nombre: falta\n"},
        {[](EmpresaNueva& e) { e.plan = leer_plan("cuenta;nombre;tipo\n1;X;gasto\n"); },
         "plan! línea 2, tipo: el grupo 1 de la base es de balance\n"}};
    for (const auto& c : casos) {
        EmpresaNueva e = nueva();
        c.cambio(e);
        EXPECT_EQ(todas(revisar_empresa(*db, e)), c.dicho);
    }
    for (const int anio : {1989, 1990, 2100, 2101}) {
        EmpresaNueva e = nueva();
        e.anio = anio;
        e.desde = fecha(anio, 1, 1);
        e.hasta = fecha(anio, 12, 31);
        EXPECT_EQ(todas(revisar_empresa(*db, e)),
                  anio == 1989 || anio == 2101 ? "anio! El año va de 1990 a 2100\n" : "");
    }
}

TEST_P(Empresas, WhatABaseLacks) {
    const auto db = crear_base(GetParam());
    const char* const pasos[][2] = {
        {"Esta base no tiene plan de cuentas.\nNueva empresa…, en la ventana de inicio, trae uno de muestra "
         "o "
         "lo importa de un archivo CSV.",
         "insert into ctmcentros(centro,n_centro) values ('1','X')"},
        {"Esta base no tiene tipos de documento.\nNueva empresa…, en la ventana de inicio, los crea.",
         "insert into adxdoc_sub(subsistema,documento) values ('01','001')"},
        {"La empresa no tiene configuración contable.\nSe ingresa con Ctrl+K, o en la ventana de inicio.",
         "insert into ctmconfigu(empresa,anio) values (7,2024)"}};
    for (const auto& [falta, remedio] : pasos) {
        EXPECT_EQ(falta_para_trabajar(*db, 7), falta);
        ejecutar(*db, remedio);
    }
    EXPECT_EQ(falta_para_trabajar(*db, 7), "");
}

TEST_P(Empresas, ChartIntoTheDatabase) {
    const auto db = crear_empresa(GetParam());
    const Plan plan = leer_plan("cuenta;nombre;tipo;auxiliar\n901;UNA;activo;s\n9;GRUPO;activo;\n"
                                "801001;OTRA;gasto;no\n701;MAS;patrimonio;0\n101001;caja;activo;\n");
    EXPECT_EQ(todos(comparar_plan(*db, plan)), "");
    EXPECT_EQ(agregar_plan(*db, plan), 4);
    EXPECT_EQ(filas(*db, "select g_cuenta,n_g_cuenta,transitorio,formato_centro,num_nivel,longitud from "
                         "ctmgcuenta where g_cuenta>'6' order by g_cuenta"),
              "7|BALANCE|0|9.99.999|3|6;8|RESULTADO|1|9.99.999|3|6;9|GRUPO|0|9.99.999|3|6");
    EXPECT_EQ(filas(*db, "select centro,n_centro,g_cuenta,activo,req_auxiliar from ctmcentros where "
                         "g_cuenta>'6' order by centro"),
              "701|MAS|7|1|0;801001|OTRA|8|1|0;9|GRUPO|9|0|0;901|UNA|9|1|1");
    const auto cuentas = cuentas_imputables(*db);
    EXPECT_EQ(cuentas.front().codigo + " " + cuentas.front().nombre, "101001 CAJA");
    EXPECT_EQ(cuentas.back().codigo + " " + cuentas.back().nombre, "901 UNA");
    EXPECT_EQ(std::to_string(cuentas.size()), filas(*db, "select count(*) from ctmcentros where activo='1'"));
    ejecutar(*db, "alter table ctmcentros rename column req_auxiliar to otra");
    EXPECT_THROW((void)agregar_plan(*db, leer_plan("cuenta;nombre;tipo\n902;X;activo\n")), ErrorSesion);
}

TEST_P(Empresas, NothingIsHalfDone) {
    const auto db = crear_empresa(GetParam());
    EmpresaNueva e = nueva();
    e.plan = leer_plan("cuenta;nombre;tipo\n9;NUEVO GRUPO;activo\n901;UNA;activo\n101001;CAJA;activo\n");
    EXPECT_EQ(todas(revisar_empresa(*db, e)), "");
    const std::string antes = filas(*db, "select count(*) from ctmcentros");
    // the last step is refused: another user created the configuration meanwhile
    ejecutar(*db, "insert into adxemp_doc(empresa,documento) values (7,'002')");
    EXPECT_THROW(crear_empresa(*db, e, codigos()), ErrorSesion);
    EXPECT_EQ(filas(*db, "select count(*) from admempresa where empresa=7"), "0");
    EXPECT_EQ(filas(*db, "select count(*) from ctmcentros"), antes);
    EXPECT_EQ(filas(*db, "select count(*) from ctmgcuenta where g_cuenta='9'"), "0");
    ejecutar(*db, "delete from adxemp_doc where empresa=7");
    crear_empresa(*db, e, codigos());
    EXPECT_EQ(filas(*db, "select g_cuenta,n_g_cuenta,transitorio from ctmgcuenta where g_cuenta='9'"),
              "9|NUEVO GRUPO|0");
    EXPECT_EQ(filas(*db, "select n_usuario from admusuario order by usuario"), "ana;luis");

    EmpresaNueva mala = nueva(7);
    mala.nombre = " ";
    mala.rut = "76854320-9";
    mala.desde = fecha(2023, 1, 1);
    mala.hasta = std::nullopt;
    mala.plan = leer_plan("cuenta;nombre;tipo\n101001;OTRA COSA;activo\n4;VENTAS;activo\n");
    EXPECT_EQ(todas(revisar_empresa(*db, mala)),
              "codigo! Ya existe la empresa 7\nnombre! Falta el nombre\nrut! El rut no es Válido\n"
              "hasta! Falta la fecha final\ndesde! La fecha debe ser del año 2024\n"
              "plan! línea 2, nombre: 101001 ya existe como CAJA\n"
              "plan! línea 3, tipo: el grupo 4 de la base es de resultado\n");
}

TEST_P(Empresas, ConfigurationOfTheYear) {
    const auto db = crear_empresa(GetParam());
    ejecutar(*db, "update ctmconfigu set elaborado=null,revisado='Jefe ',aprobado=''");
    auto c = *leer_configuracion_anual(*db, 1, 2024);
    EXPECT_EQ(c.elaborado + "|" + c.revisado + "|" + c.aprobado, "Elaborado|Jefe|");
    EXPECT_EQ(c.f_digi_inicial, fecha(2024, 1, 1));
    EXPECT_EQ(c.f_digi_final, fecha(2024, 12, 31));
    EXPECT_EQ(todas(revisar_configuracion(*db, c)), "");
    EXPECT_EQ(anios_configurados(*db, 1), std::vector<int>{2024});
    EXPECT_FALSE(leer_configuracion_anual(*db, 1, 2025));
    c.f_digi_inicial = fecha(2024, 12, 1);
    c.f_digi_final = fecha(2024, 1, 31);
    c.cuentas.erase("iva");
    c.cuentas["centro_per"] = " ";
    c.cuentas["otros_impuestos"] = "501001"; // of the result, as it may be
    c.cuentas["honorarios_pagar"] = "101002";
    c.cuentas["factura_cobrar"] = "101001";
    c.cuentas["factura_pagar"] = "999999";
    c.cuentas["boleta_pagar"] = "501009";
    c.cuentas["centro_gan"] = "401001";
    c.elaborado = c.revisado = "Una firma de más de treinta les";
    c.aprobado = "Una firma de treinta letras ññ";
    EXPECT_EQ(todas(revisar_configuracion(*db, c)),
              "f_digi_final! El período termina antes de empezar\n"
              "factura_cobrar  La cuenta 101001 no pide auxiliar\n"
              "factura_pagar! La cuenta 999999 no existe\n"
              "boleta_pagar! La cuenta 501009 es un título o no está en uso\n"
              "iva  Falta: sin ella no se graba ningún comprobante\n"
              "honorarios_pagar  La cuenta 101002 no pide auxiliar\n"
              "centro_gan! La cuenta 401001 es de resultado: el cierre la saldaría\n"
              "centro_per  Falta: se necesita para cerrar el año\n"
              "elaborado! Tiene más de 30 letras\nrevisado! Tiene más de 30 letras\n");
    c = *leer_configuracion_anual(*db, 1, 2024);
    c.f_digi_final = fecha(2025, 1, 1);
    EXPECT_EQ(todas(revisar_configuracion(*db, c)), "f_digi_final! La fecha debe ser del año 2024\n");
    c.f_digi_final = std::nullopt;
    EXPECT_EQ(todas(revisar_configuracion(*db, c)), "") << "each end of the period may be open";
    c.f_digi_final = fecha(2024, 1, 1);
    c.f_digi_inicial = std::nullopt;
    EXPECT_EQ(todas(revisar_configuracion(*db, c)), "");
    c = *leer_configuracion_anual(*db, 1, 2024);
    c.cuentas["iva"] = "203002";
    c.cuentas.erase("otros_impuestos");
    c.f_digi_inicial = std::nullopt;
    c.elaborado = "O'Higgins";
    c.aprobado = "Jefa";
    ejecutar(*db, "update ctmconfigu set f_comp_cierre=#12/31/2024#,documento_cierre='001',"
                  "num_docum_cierre='9'");
    grabar_configuracion(*db, c);
    EXPECT_EQ(filas(*db, "select iva,otros_impuestos,elaborado,revisado,aprobado,f_comp_cierre,"
                         "num_docum_cierre from ctmconfigu"),
              "203002||O'Higgins|Jefe|Jefa|2024-12-31|9");
    EXPECT_EQ(leer_configuracion_anual(*db, 1, 2024)->cierre, "001 9 del 31/12/2024");
    EXPECT_FALSE(leer_configuracion_anual(*db, 1, 2024)->f_digi_inicial);
    c.anio = 2025;
    grabar_configuracion(*db, c);
    EXPECT_EQ(anios_configurados(*db, 1), (std::vector<int>{2025, 2024}));
    ejecutar(*db, "alter table ctmconfigu rename column aprobado to otra");
    EXPECT_THROW(grabar_configuracion(*db, c), ErrorSesion);
}

TEST(Configuracion, AsksForTwelveAccounts) {
    std::string titulos; // in the order of a save, those of persons with a star
    for (const CuentaConfigurada& t : cuentas_configuradas()) {
        EXPECT_EQ(cuenta_configurada(t.columna), &t);
        titulos += std::string(t.columna) + (t.de_tercero ? "*" : "") + " " + t.titulo + "\n";
    }
    EXPECT_EQ(titulos, "factura_cobrar* Clientes, facturas por cobrar\nboleta_cobrar Boletas por cobrar\n"
                       "factura_pagar* Proveedores, facturas por pagar\nboleta_pagar Boletas por pagar\n"
                       "iva IVA de ventas (débito fiscal)\notros_impuestos Otros impuestos de ventas\n"
                       "iva_compra IVA de compras (crédito fiscal)\n"
                       "otros_impuestos_compra Otros impuestos de compras\n"
                       "honorarios_pagar* Honorarios por pagar\n"
                       "retencion_seg_cat Retención de segunda categoría\n"
                       "centro_gan Utilidad del ejercicio\ncentro_per Pérdida del ejercicio\n");
}

TEST(PlanCsv, EveryErrorByLineAndField) {
    EXPECT_EQ(todos(leer_plan("codigo;nombre\n1;CAJA\n").errores),
              "línea 1, cuenta: falta la columna\nlínea 1, tipo: falta la columna\n");
    EXPECT_EQ(todos(leer_plan("cuenta;nombre;tipo\n").errores),
              "línea 2, cuenta: el archivo no tiene cuentas\n");
    EXPECT_EQ(todos(leer_plan("Cuenta;Nombre;Tipo;Auxiliar;Uso\n"
                              "1;ACTIVO;activo;;\n"
                              "\n"
                              "1.01;;activo;;\n"
                              "1a;CAJA;activo;quizás;\n"
                              "1.02;BANCO;cosa;;iva\n"
                              "1;OTRO;gasto;1;iba\n"
                              "1.03;CLIENTES;ACTIVO;sí;iva\n")
                        .errores),
              "línea 4, nombre: falta\n"
              "línea 5, cuenta: \"1a\" no es un código de dígitos\n"
              "línea 5, auxiliar: \"quizas\" no es 1 ni 0\n"
              "línea 6, tipo: \"cosa\" no es activo, pasivo, patrimonio, ingreso ni gasto\n"
              "línea 7, cuenta: 1 está repetida: línea 2\n"
              "línea 7, tipo: el grupo 1 mezcla cuentas de balance y de resultado\n"
              "línea 7, uso: \"iba\" no es un uso conocido\n"
              "línea 8, uso: iva está repetido: línea 6\n");
    // what the configuration would refuse later is refused here
    EXPECT_EQ(
        todos(leer_plan("cuenta;nombre;tipo;auxiliar;uso\n1;A;activo;;iva\n11;B;activo;;factura_cobrar\n"
                        "41;C;ingreso;;centro_gan\n21;D;pasivo;;centro_per\n")
                  .errores),
        "línea 2, uso: La cuenta 1 es un título o no está en uso\n"
        "línea 4, uso: La cuenta 41 es de resultado: el cierre la saldaría\n");
    const std::string veinte(20, '1'), letras(48, 'n');
    EXPECT_EQ(todos(leer_plan("cuenta;nombre;tipo;auxiliar\n" + veinte + ";" + letras + "ñá;pasivo;1\n" +
                              veinte + "1;" + letras +
                              "ñáx;activo;n\n;CAJA;activo\n2\n1/2;A;activo;\n"
                              "1:;A;activo;x\n")
                        .errores),
              "línea 3, cuenta: tiene más de 20 dígitos\n"
              "línea 3, nombre: tiene más de 50 letras\n"
              "línea 4, cuenta: falta\n"
              "línea 5, nombre: falta\n"
              "línea 5, tipo: \"\" no es activo, pasivo, patrimonio, ingreso ni gasto\n"
              "línea 6, cuenta: \"1/2\" no es un código de dígitos\n"
              "línea 7, cuenta: \"1:\" no es un código de dígitos\n"
              "línea 7, auxiliar: \"x\" no es 1 ni 0\n");
    EXPECT_EQ(todos(leer_plan("cuenta;nombre;tipo\n1;;activo\n").errores), "línea 2, nombre: falta\n");
    std::string once = "cuenta;nombre;tipo\n";
    for (std::size_t largo = 1; largo <= 10; ++largo) once += veinte.substr(0, largo) + ";X;activo\n";
    EXPECT_EQ(todos(leer_plan(once).errores), "");
    EXPECT_EQ(todos(leer_plan(once + "11111111111;X;activo\n").errores),
              "línea 1, cuenta: los códigos tienen más de 10 largos distintos\n");
}

TEST(PlanCsv, KindsAndAuxiliaries) {
    std::string leido;
    for (const CuentaPlan& c : leer_plan("cuenta;nombre;tipo;auxiliar\n11;A;activo;1\n12;A;activo;0\n"
                                         "21;A;Pasivo;si\n22;A;pasivo;No\n31;A;patrimonio;S\n"
                                         "41;A;ingreso;n\n51;A;gasto;\n")
                                   .cuentas)
        leido += c.codigo + "/" + c.grupo + (c.de_resultado ? " R" : " B") + (c.auxiliar ? "x " : " ");
    EXPECT_EQ(leido, "11/1 Bx 12/1 B 21/2 Bx 22/2 B 31/3 Bx 41/4 R 51/5 R ");
}

TEST(PlanCsv, AsSpreadsheetsWriteIt) {
    const Plan utf8 = leer_plan("\xEF\xBB\xBF"
                                "cuenta,nombre,tipo\r\n1,\"Año, \"\"bueno\"\"\",activo\r\n"
                                "1.1,Ñandú,activo");
    ASSERT_EQ(utf8.cuentas.size(), 2U) << todos(utf8.errores);
    EXPECT_EQ(utf8.cuentas[0].nombre + "|" + utf8.cuentas[1].nombre + "|" + utf8.cuentas[1].codigo,
              "Año, \"bueno\"|Ñandú|11");
    EXPECT_EQ(utf8.formato, "9.9");
    const Plan latina = leer_plan("cuenta\tnombre\ttipo\n1\tA\xF1o\tactivo\n");
    ASSERT_EQ(latina.cuentas.size(), 1U) << todos(latina.errores);
    EXPECT_EQ(latina.cuentas[0].nombre, "Año");
    EXPECT_EQ(todos(leer_plan("cuenta;nombre;tipo\n1;\x81;activo\n").errores),
              "línea 2, texto: hay letras que no son UTF-8 ni Windows-1252\n");
    // the lines of a quoted cell with a line end are counted
    EXPECT_EQ(todos(leer_plan("cuenta;nombre;tipo\n1;\"dos\nlíneas\";activo\n2;;pasivo\n").errores),
              "línea 4, nombre: falta\n");
}

} // namespace
