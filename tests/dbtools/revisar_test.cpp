// Goal: the tools that create, check and tune a database tell the truth on both engines.
// Method: a small company with one voucher, then one spoiled datum or one dropped object at a time.
#include "apoyo/empresa.h"
#include "dbtools/base.h"
#include "dbtools/esquema.h"
#include "dbtools/revisar.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace quorvel::dbtools {
namespace {

using apoyo::Motor;

class Herramientas : public testing::TestWithParam<Motor> {
protected:
    void SetUp() override {
        conexion = apoyo::conexion_empresa(GetParam());
        ejecutar("insert into ctcquorvel(empresa,f_comp,documento,num_docum,t_debe,t_haber,libro)"
                 " values (1,'2024-05-03','001','7',500,500,'CONTABLES')");
        ejecutar("insert into "
                 "ctdquorvel(empresa,f_comp,documento,num_docum,secuencia,centro,auxiliar,debe_nacional)"
                 " values (1,'2024-05-03','001','7',1,'103001','000012',500)");
        ejecutar("insert into ctdquorvel(empresa,f_comp,documento,num_docum,secuencia,centro,haber_nacional)"
                 " values (1,'2024-05-03','001','7',2,'401001',500)");
    }
    void ejecutar(const std::string& sql) { abrir_base(conexion, Abrir::existente)->ejecutar(sql); }
    std::string conexion;
};
INSTANTIATE_TEST_SUITE_P(Motores, Herramientas, testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& info) { return apoyo::nombre(info.param); });

std::string unir(const std::vector<std::string>& hallazgos) {
    std::string texto;
    for (const std::string& h : hallazgos) texto += h + "\n";
    return texto;
}

TEST_P(Herramientas, una_base_sana_no_tiene_observaciones) {
    EXPECT_EQ(unir(revisar(conexion)), "");
    EXPECT_EQ(afinar(conexion).indices, 0);
}

TEST_P(Herramientas, no_se_crea_dos_veces) {
    EXPECT_THROW(crear_esquema(conexion), ErrorSesion);
    EXPECT_EQ(unir(revisar(conexion)), "");
}

TEST_P(Herramientas, cada_dato_danado_se_encuentra) {
    struct Caso {
        const char *dano, *arreglo, *hallazgo;
    };
    const Caso CASOS[] = {
        {"update ctdquorvel set debe_nacional=501 where secuencia=1",
         "update ctdquorvel set debe_nacional=500 where secuencia=1",
         "Comprobante descuadrado: empresa 1, 03/05/2024, documento 001, Nro.7 (1)"},
        {"update ctcquorvel set t_haber=499", "update ctcquorvel set t_haber=500",
         "Totales distintos de la suma del detalle: empresa 1, 03/05/2024"},
        {"update ctcquorvel set estado='X'", "update ctcquorvel set estado='P'",
         "Comprobante anulado con detalle"},
        {"update ctcquorvel set estado='Q'", "update ctcquorvel set estado='P'",
         "Estado desconocido: empresa 1, "
         "03/05/2024, documento 001, Nro.7 (Q)"},
        {"update ctcquorvel set subsistema='02'", "update ctcquorvel set subsistema='01'",
         "Detalle sin comprobante"},
        {"update ctdquorvel set centro='409999' where secuencia=2",
         "update ctdquorvel set centro='401001' where secuencia=2",
         "Detalle con cuenta que no existe: empresa 1, "
         "03/05/2024, documento 001, Nro.7 (409999)"},
        {"update ctmcentros set g_cuenta='9' where centro='401001'",
         "update ctmcentros set g_cuenta='4' where centro='401001'", "Detalle con cuenta sin grupo"},
        {"update ctdquorvel set auxiliar='' where secuencia=1",
         "update ctdquorvel set auxiliar='000012' where secuencia=1",
         "Detalle sin el auxiliar que exige la cuenta"},
        {"update ctdquorvel set auxiliar='777777' where secuencia=1",
         "update ctdquorvel set auxiliar='000012' where secuencia=1", "Detalle con auxiliar que no existe"},
        {"update admdocumen set documento='901' where documento='001'",
         "update admdocumen set documento='001' where documento='901'",
         "Tipo de documento que no existe: 001"},
        {"update ctcquorvel set bloqueo_usuario=77", "update ctcquorvel set bloqueo_usuario=0",
         "Comprobante bloqueado por un usuario que no existe: empresa 1, 03/05/2024, documento 001, Nro.7 "
         "(77)"},
        {"insert into ctdcomprad(comprobante_adjunto,correlativo,nombre) values (9,1,'a')",
         "delete from ctdcomprad", "Adjuntos sin comprobante: 9"},
        {"update ctcquorvel set comprobante_adjunto=9; insert into "
         "ctcquorvel(empresa,f_comp,documento,"
         "num_docum,comprobante_adjunto,estado) values (1,'2024-05-03','001','8',9,'X')",
         "delete from ctcquorvel where num_docum='8'", "Conjunto de adjuntos de varios comprobantes: 9"},
        {"insert into ftdfactura(empresa,factura,producto) values (1,'3','1')", "delete from ftdfactura",
         "Detalle de factura sin factura: 3"},
        {"update ctcquorvel set apertura='1'; insert into ctmconfigu(empresa,anio,f_comp_cierre)"
         " values (1,2023,'2023-12-31')",
         "delete from ctmconfigu where anio=2023",
         "Apertura distinta del cierre del año anterior: empresa 1, 03/05/2024, documento 001, Nro.7 "
         "(103001)"},
    };
    for (const Caso& caso : CASOS) {
        SCOPED_TRACE(caso.dano);
        ejecutar(caso.dano);
        EXPECT_NE(unir(revisar(conexion)).find(caso.hallazgo), std::string::npos) << unir(revisar(conexion));
        ejecutar(caso.arreglo);
        EXPECT_EQ(unir(revisar(conexion)), "");
    }
}

TEST_P(Herramientas, un_adjunto_que_falta_en_el_disco) {
    ejecutar("update ctcquorvel set comprobante_adjunto=9;"
             "insert into ctdcomprad(comprobante_adjunto,correlativo,nombre) values (9,1,'a.pdf')");
    const std::string carpeta = apoyo::carpeta_nueva();
    EXPECT_EQ(unir(revisar(conexion)), "") << "nobody said where the files are";
    EXPECT_EQ(unir(revisar(conexion, carpeta)),
              "Archivo adjunto que no está: empresa 1, 03/05/2024, documento 001, Nro.7 (a.pdf)\n");
    std::filesystem::create_directories(carpeta + "/adjunto/9"); // the older layout
    std::ofstream(carpeta + "/adjunto/9/a.pdf") << "x";
    EXPECT_EQ(unir(revisar(conexion, carpeta)), "");
}

TEST_P(Herramientas, los_blancos_finales_no_son_un_dano) {
    ejecutar("update ctdquorvel set centro='401001 ' where secuencia=2");
    ejecutar("update ctcquorvel set num_docum='7 '");
    EXPECT_EQ(unir(revisar(conexion)), "");
}

TEST_P(Herramientas, afinar_repone_todos_los_indices) {
    const auto base = abrir_base(conexion, Abrir::existente);
    const char* sql =
        GetParam() == Motor::sqlite
            ? "select name from sqlite_master where type='index' and sql is not null"
            : "select indexname from pg_indexes where schemaname='public' and indexname not like '%_pkey'";
    const Base::Filas indices = base->consultar(sql);
    ASSERT_GT(indices.size(), 10U);
    for (const auto& indice : indices) base->ejecutar("drop index " + indice[0]);
    EXPECT_EQ(revisar(conexion).size(), indices.size());
    EXPECT_EQ(afinar(conexion).indices, static_cast<int>(indices.size()));
    EXPECT_EQ(unir(revisar(conexion)), "");
}

TEST_P(Herramientas, una_base_antigua_admite_despues_columnas_sin_llenar) {
    ejecutar(GetParam() == Motor::sqlite
                 ? "pragma writable_schema=on; update sqlite_master set sql=replace(sql,'default ''''',"
                   "'NOT  NULL default ''''') where name='ctdquorvel'; pragma schema_version=999"
                 : "alter table ctdquorvel alter glosa set not null, alter auxiliar set not null");
    const auto otra = abrir_sesion(conexion);
    const std::string sin_glosa = "update ctdquorvel set glosa=null, auxiliar=null where secuencia=2";
    EXPECT_EQ(otra->executesql(sin_glosa), 0);
    EXPECT_EQ(unir(revisar(conexion)),
              "La tabla ctdquorvel no admite filas de otros programas con columnas sin llenar\n");
    EXPECT_EQ(afinar(conexion).indices, 0);
    EXPECT_EQ(unir(revisar(conexion)), "");
    EXPECT_EQ(otra->executesql(sin_glosa), 1) << otra->last_error();
    EXPECT_EQ(otra->executesql("update ctdquorvel set centro=null"), 0);
    EXPECT_EQ(unir(revisar(conexion)), "");
}

TEST_P(Herramientas, numeros_repetidos_de_una_base_antigua) {
    ejecutar("drop index ctcquorvel_clave");
    ejecutar("drop index ctcquorvel_bloqueo");
    ejecutar("insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum)"
             " values (1,'02','2024-05-03','001','7 ')");
    EXPECT_NE(
        unir(revisar(conexion)).find("Numero de comprobante repetido: empresa 1, 03/05/2024, documento 001"),
        std::string::npos);
    EXPECT_THROW(afinar(conexion), ErrorSesion); // the key cannot be built, but nothing else is left out
    EXPECT_EQ(unir(revisar(conexion)).find("ctcquorvel_bloqueo"), std::string::npos);
}

TEST_P(Herramientas, la_historia_comienza_con_lo_que_hay_y_dice_lo_que_cambio_sin_ella) {
    ejecutar("drop table ctdhistoria");
    ejecutar("drop table ctmhistoria");
    EXPECT_EQ(unir(revisar(conexion)),
              "Falta la tabla ctmhistoria; db tune la crea\nFalta la tabla ctdhistoria; db tune la crea\n");
    const Afinado hecho = afinar(conexion);
    EXPECT_TRUE(hecho.historia);
    EXPECT_EQ(hecho.versiones, 1);
    EXPECT_FALSE(afinar(conexion).historia);
    EXPECT_EQ(unir(revisar(conexion)), "");
    ejecutar("update ctdquorvel set glosa='otra' where secuencia=2");
    EXPECT_EQ(unir(revisar(conexion)),
              "Historia de la empresa 1: comprobante 2024-05-03|001|01|7 cambió sin historia\n");
    ejecutar("update ctdhistoria set usuario=9");
    EXPECT_NE(
        unir(revisar(conexion)).find("la versión 1 (inicio, comprobante 2024-05-03|001|01|7) fue cambiada"),
        std::string::npos);
    ejecutar("delete from ctdquorvel");
    ejecutar("delete from ctcquorvel");
    EXPECT_NE(unir(revisar(conexion)).find("2024-05-03|001|01|7 se quitó sin historia"), std::string::npos);
    EXPECT_EQ(revisar_codigo(conexion, "1-9-00000000").size(), 1U);
    ejecutar("drop table ctdhistoria");
    EXPECT_NE(unir(revisar(conexion)).find("llegaba a la 1 y hay hasta la 0"), std::string::npos);
}

TEST_P(Herramientas, tablas_y_columnas_que_faltan) {
    ejecutar("drop table ctdcomprad");
    ejecutar("alter table ctmgcuenta drop column longitud");
    ejecutar("alter table ftcfactura drop column cotización");
    const std::string hallazgos = unir(revisar(conexion));
    EXPECT_NE(hallazgos.find("Falta la tabla ctdcomprad\n"), std::string::npos);
    EXPECT_NE(hallazgos.find("Falta la columna longitud de la tabla ctmgcuenta\n"), std::string::npos);
    EXPECT_NE(hallazgos.find("Falta la columna cotización de la tabla ftcfactura\n"), std::string::npos);
}

TEST(HerramientasArchivo, un_archivo_que_no_existe_no_aparece) {
    const std::string ruta = apoyo::carpeta_nueva() + "/nada.db";
    EXPECT_THROW((void)revisar(ruta), ErrorSesion);
    EXPECT_THROW(en_transaccion(ruta, [](Base& b) { b.ejecutar("create table mal ("); }), ErrorSesion);
    EXPECT_FALSE(std::filesystem::exists(ruta));
}

} // namespace
} // namespace quorvel::dbtools
