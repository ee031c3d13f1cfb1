// Goal: the demonstration company is one that an accountant would accept, the same on both engines.
// Method: generated for a fixed day and read back through the sessions that the screen uses.
#include "apoyo/sesiones.h"
#include "dbtools/revisar.h"
#include "demo/demo.h"
#include "text/rut.h"

#include <gtest/gtest.h>

#include <map>

namespace quorvel::dbtools {
namespace {

using apoyo::filas;
using apoyo::Motor;

constexpr Fecha HOY = std::chrono::year{2026} / 6 / 17;

class Demo : public testing::TestWithParam<Motor> {
protected:
    static std::string conexion(Motor motor) {
        static std::map<Motor, std::string> hechas; // made once for all tests, which only read
        if (!hechas.count(motor)) {
            hechas[motor] = apoyo::conexion_nueva(motor);
            demo::crear_demo(hechas[motor], HOY);
        }
        return hechas[motor];
    }
    std::unique_ptr<clsConexion> db = abrir_sesion(conexion(GetParam()));
};
INSTANTIATE_TEST_SUITE_P(Motores, Demo, testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& info) { return apoyo::nombre(info.param); });

TEST_P(Demo, pasa_la_revision) { EXPECT_TRUE(revisar(conexion(GetParam())).empty()); }

TEST_P(Demo, no_se_mezcla_con_otra_empresa) {
    EXPECT_THROW(demo::crear_demo(conexion(GetParam()), HOY), ErrorSesion);
}

TEST_P(Demo, tiene_los_maestros_y_los_siete_libros) {
    EXPECT_EQ(filas(*db, "select count(*) from ctmcentros where len(centro)=6"), "149");
    EXPECT_EQ(filas(*db, "select count(*) from ctxaux_cod"), "60");
    EXPECT_EQ(filas(*db, "select count(distinct libro) from ctcquorvel"), "7");
    EXPECT_EQ(filas(*db, "select anio from ctmconfigu order by anio"), "2025;2026");
    EXPECT_EQ(filas(*db, "select count(*) from ctcquorvel where f_comp>#06/17/2026# or f_comp<#01/01/2025#"),
              "0");
    EXPECT_EQ(filas(*db, "select count(*) from adxdoc_sub where documento in ('006','007')"), "0");
}

TEST_P(Demo, todos_los_rut_son_validos) {
    for (const char* sql : {"select rut as r from ctxaux_cod", "select rut as r from admempresa",
                            "select distinct rut_persona as r from ctcquorvel"})
        for (const auto rs = db->NewRecord(sql); !rs->eof(); rs->MoveNext()) {
            std::string rut = rs->fields("r").Value.text();
            while (!rut.empty() && rut.back() == ' ') rut.pop_back();
            const ResultadoRut r = validarut(rut);
            EXPECT_TRUE(r.valido) << rut;
            EXPECT_EQ(r.texto, rut);
        }
}

TEST_P(Demo, la_numeracion_sigue_a_los_comprobantes) {
    for (const auto rs = db->NewRecord("select * from adxemp_doc where ultimo_emitido<>'0'"); !rs->eof();
         rs->MoveNext()) {
        const std::string documento = rs->fields("documento").Value.text();
        EXPECT_EQ(filas(*db, "select max(val(num_docum)) from ctcquorvel where empresa=1 and documento='" +
                                 documento + "' and year(f_comp)=2026"),
                  rs->fields("ultimo_emitido").Value.text());
    }
    // Numbers are given in the order of the days, without holes.
    EXPECT_EQ(filas(*db, "select count(*)-max(val(num_docum)) from ctcquorvel where documento='003' and "
                         "year(f_comp)=2026"),
              "0");
}

TEST_P(Demo, la_apertura_trae_los_saldos_del_anio_cerrado) {
    // Balances of the closed year without its result accounts equal the opening voucher's lines.
    const std::string saldos =
        "select a.centro, a.auxiliar, sum(a.debe_nacional-a.haber_nacional) as s from "
        "ctdquorvel a, ctcquorvel d where a.empresa=d.empresa and a.f_comp=d.f_comp and "
        "a.documento=d.documento and a.num_docum=d.num_docum and ";
    const std::string fin = " group by a.centro, a.auxiliar having sum(a.debe_nacional-a.haber_nacional)<>0"
                            " order by a.centro, a.auxiliar";
    const std::string cerrado = filas(*db, saldos + "year(a.f_comp)=2025" + fin);
    EXPECT_EQ(filas(*db, saldos + "year(a.f_comp)=2026 and d.apertura='1'" + fin), cerrado);
    EXPECT_EQ(cerrado.find(";4"), std::string::npos);
    EXPECT_EQ(cerrado.find(";5"), std::string::npos);
    EXPECT_NE(cerrado.find(";302001||-"), std::string::npos); // a profit
}

TEST_P(Demo, los_saldos_mensuales_son_la_suma_del_detalle) {
    EXPECT_EQ(filas(*db, "select debe3, haber3 from ctmsdcenth where empresa=1 and anio=2026 and centro='1'"),
              filas(*db, "select sum(debe_nacional), sum(haber_nacional) from ctdquorvel where empresa=1 and "
                         "f_comp between #03/01/2026# and #03/31/2026# and centro between '1' and '199999'"));
    EXPECT_EQ(
        filas(*db, "select sum(haber5) from ctmsdmayor where empresa=1 and anio=2026 and centro='201001'"),
        filas(*db,
              "select sum(haber_nacional) from ctdquorvel where empresa=1 and f_comp between #05/01/2026# "
              "and #05/31/2026# and centro='201001'"));
}

TEST_P(Demo, no_queda_una_cuenta_con_saldo_imposible) {
    const std::string activo =
        filas(*db, "select centro from ctdquorvel where year(f_comp)=2026 and centro in "
                   "('101003','103001','106001') group by centro having "
                   "sum(debe_nacional)<sum(haber_nacional)");
    EXPECT_EQ(activo, "");
}

TEST(DemoServidor, los_mismos_comprobantes) {
    std::vector<std::string> sumas;
    for (const Motor motor : apoyo::MOTORES) {
        const std::string conexion = apoyo::conexion_nueva(motor);
        demo::crear_demo(conexion, HOY);
        sumas.push_back(filas(*abrir_sesion(conexion),
                              "select f_comp, documento, num_docum, t_debe, libro from "
                              "ctcquorvel order by f_comp, documento, val(num_docum)"));
    }
    EXPECT_EQ(sumas[0], sumas[1]);
}

} // namespace
} // namespace quorvel::dbtools
