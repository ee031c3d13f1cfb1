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
    EXPECT_EQ(todas(revisar_empresa(*db, e)), "plan! La base no tiene plan de cuentas\n");
    e.plan = leer_plan(dbtools::leer_dato("plan/plan_general.csv"));
    EXPECT_EQ(todos(e.plan->errores), "");
    EXPECT_EQ(todas(revisar_empresa(*db, e)), "");
    crear_empresa(*db, e, codigos());
    EXPECT_EQ(filas(*db, "select n_empresa,rut from admempresa"), "Panadería O'Higgins; Ñuñoa|76.854.320-8");
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
              "001;002;003;004;005;006;007");
    EXPECT_EQ(filas(*db, "select documento from adxdoc_sub order by documento"),
              "001;002;003;004;005;006;007")
        << "income and egress too";
    EXPECT_EQ(proponer_codigo_empresa(*db), 2);
    // the next company takes the chart and the accounts of the first
    EmpresaNueva otra = nueva(2);
    EXPECT_EQ(todas(revisar_empresa(*db, otra)), "");
    crear_empresa(*db, otra, codigos());
    EXPECT_EQ(leer_configuracion_anual(*db, 2, 2024)->cuentas, c->cuentas);
    EXPECT_EQ(filas(*db, "select count(*) from admusuario"), "1");
}

TEST_P(Empresas, NothingIsHalfDone) {
    const auto db = crear_empresa(GetParam());
    EmpresaNueva e = nueva();
    e.plan = leer_plan("cuenta;nombre;tipo\n9;NUEVO GRUPO;activo\n901;UNA;activo\n101001;CAJA;activo\n");
    EXPECT_EQ(todas(revisar_empresa(*db, e)), "");
    const std::string antes = filas(*db, "select count(*) from ctmcentros");
    // the last step is refused: another user created the configuration meanwhile
    ejecutar(*db, GetParam() == Motor::sqlite ? "insert into adxemp_doc(empresa,documento) values (7,'002')"
                                              : "insert into adxemp_doc(empresa,documento) values (7,'002')");
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
    auto c = *leer_configuracion_anual(*db, 1, 2024);
    EXPECT_EQ(todas(revisar_configuracion(*db, c)), "");
    EXPECT_EQ(anios_configurados(*db, 1), std::vector<int>{2024});
    EXPECT_FALSE(leer_configuracion_anual(*db, 1, 2025));
    c.f_digi_inicial = fecha(2024, 12, 1);
    c.f_digi_final = fecha(2024, 1, 31);
    c.cuentas["iva"] = "";
    c.cuentas["factura_cobrar"] = "101001";
    c.cuentas["factura_pagar"] = "999999";
    c.cuentas["boleta_pagar"] = "501009";
    c.cuentas["centro_gan"] = "401001";
    c.aprobado = "Una firma de más de treinta letras";
    EXPECT_EQ(todas(revisar_configuracion(*db, c)),
              "f_digi_final! El período termina antes de empezar\n"
              "factura_cobrar  La cuenta 101001 no pide auxiliar\n"
              "factura_pagar! La cuenta 999999 no existe\n"
              "boleta_pagar! La cuenta 501009 es un título o no está en uso\n"
              "iva  Falta: sin ella no se graba ningún comprobante\n"
              "centro_gan! La cuenta 401001 es de resultado: el cierre la saldaría\n"
              "aprobado! Tiene más de 30 letras\n");
    c = *leer_configuracion_anual(*db, 1, 2024);
    c.cuentas["iva"] = "203002";
    c.f_digi_inicial = std::nullopt;
    c.elaborado = "O'Higgins";
    ejecutar(*db, "update ctmconfigu set f_comp_cierre=#12/31/2024#,documento_cierre='001',"
                  "num_docum_cierre='9'");
    grabar_configuracion(*db, c);
    EXPECT_EQ(filas(*db, "select iva,elaborado,f_comp_cierre,num_docum_cierre from ctmconfigu"),
              "203002|O'Higgins|2024-12-31|9");
    EXPECT_EQ(leer_configuracion_anual(*db, 1, 2024)->cierre, "001 9 del 31/12/2024");
    EXPECT_FALSE(leer_configuracion_anual(*db, 1, 2024)->f_digi_inicial);
    c.anio = 2025;
    grabar_configuracion(*db, c);
    EXPECT_EQ(anios_configurados(*db, 1), (std::vector<int>{2025, 2024}));
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
