// Goal: the statements of the screen are answered by the indexes made for them.
// Method: the demonstration company's database explains the translated statement, on both engines.
#include "apoyo/plan.h"
#include "apoyo/sesiones.h"
#include "demo/demo.h"

#include <gtest/gtest.h>

namespace quorvel::dbtools {
namespace {

using apoyo::Motor;

struct Caso {
    const char *sql, *indice;
};
constexpr Caso CASOS[] = {
    {"select max(val(num_docum)) as sec from ctcquorvel where empresa=1 and documento ='001' and "
     "year(f_comp) =2026",
     "ctcquorvel_numero"},
    {"select max(cast(num_docum as integer)) as sec from ctcquorvel where empresa=1 and documento ='001'"
     " and year(f_comp) =2026",
     "ctcquorvel_numero"},
    {"select max(nro_correlativo) as sec from ctcquorvel where empresa=1 and libro ='VENTAS'"
     " and year(f_comp) =2026 and month(f_comp) =3",
     "ctcquorvel_correlativo"},
    {"select * from ctcQuorvel where empresa=1 and f_comp=#05/03/2026# and documento='001' and num_docum='7'",
     "ctcquorvel_clave"},
    {"select * from ctcquorvel where empresa=1 and libro='VENTAS' and doc_libro='FACTURA'"
     " and rut_persona='12.345.678-5' and num_ref='900' and estado='P'",
     "ctcquorvel_referencia"},
    {"select * from ctcquorvel where empresa=1 and rut_persona='12.345.678-5' order by f_comp desc, "
     "documento "
     "desc, num_docum desc limit 200",
     "ctcquorvel_contraparte"},
    {"SELECT distinct rut_persona, nombre FROM ctcquorvel where 1=1 AND rut_persona<>' '  order by nombre "
     "limit "
     "200",
     "ctcquorvel_nombre"},
    {"select * from ctcQuorvel where empresa=1 and num_ref='900'", "ctcquorvel_referencia"},
    {"update ctcquorvel set bloqueo_usuario= 0 where empresa=1 and bloqueo_usuario=3", "ctcquorvel_bloqueo"},
    {"select max(comprobante_adjunto) as num from ctcquorvel ", "ctcquorvel_adjunto"},
    {"select max(cheque) as cheque from ctcquorvel where banco='B' and cuenta='1'", "ctcquorvel_cheque"},
    {"select max(correlativo) as num from ctdcomprad ", "ctdcomprad_correlativo"},
    {"select centro, auxiliar, sum(debe_nacional) as debe, sum(haber_nacional) as haber from ctdquorvel"
     " where empresa=1 and f_comp between #01/01/2025# and #12/31/2025# group by centro, auxiliar",
     "ctdquorvel_sumas"},
    {"select * from ctxaux_cod a where a.activo='1' and rut='12.345.678-5'", "ctxaux_cod_"},
};

class Indices : public testing::TestWithParam<Motor> {};
INSTANTIATE_TEST_SUITE_P(Motores, Indices, testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& info) { return apoyo::nombre(info.param); });

TEST_P(Indices, las_consultas_de_la_pantalla_usan_su_indice) {
    const std::string conexion = apoyo::conexion_nueva(GetParam());
    demo::crear_demo(conexion, std::chrono::year{2026} / 6 / 17);
    const auto base = abrir_base(conexion, Abrir::existente);
    if (GetParam() == Motor::postgres) { // the demo is small enough for the planner to read it all
        base->ejecutar("vacuum analyze");
        base->ejecutar(
            "set enable_seqscan=off; set enable_bitmapscan=off; set plan_cache_mode=force_generic_plan");
    }
    for (const Caso& caso : CASOS) {
        const std::string texto = apoyo::plan(*base, caso.sql);
        EXPECT_NE(texto.find(caso.indice), std::string::npos) << caso.sql << "\n" << texto;
    }
    // the last number comes from the index's end
    if (GetParam() == Motor::sqlite) { // the explanation of max() hides the order; the same by hand shows it
        const Base::Filas filas = base->consultar(
            "explain query plan select num_docum from ctcquorvel where empresa=1 and documento='001' and "
            "cast(strftime('%Y', f_comp) as integer)=2026 order by cast(num_docum as integer) desc");
        for (const auto& fila : filas)
            EXPECT_EQ(fila.back().find("TEMP B-TREE"), std::string::npos) << fila.back();
    } else {
        const std::string texto = apoyo::plan(*base, CASOS[1].sql);
        EXPECT_NE(texto.find("Limit"), std::string::npos) << texto;
    }
}

} // namespace
} // namespace quorvel::dbtools
