// Goal: reopening a year takes back what its close made and nothing else, and closing it again gives the same
// vouchers. Method: a company is closed with the real rules, reopened and closed again, on both engines.
#include "apoyo/comprobante.h"
#include "apoyo/empresa.h"
#include "historia/cadena.h"
#include "historia/comenzar.h"
#include "voucher/grabar.h"
#include "yearend/apertura.h"
#include "yearend/cerrar_anio.h"
#include "yearend/cierre.h"
#include "yearend/reabrir_anio.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

class Reabrir : public ::testing::TestWithParam<Motor> {
protected:
    Reabrir() {
        proteger(*db, 1, 1, true, true);
        EXPECT_EQ(grabar(compra("1"), {}), "");
        Comprobante venta = compra("2");
        venta.libro = "CONTABLES";
        venta.lineas = {{"101001", "", 300000, {}, "venta"}, {"401001", "", {}, 300000, "venta"}};
        venta.totales = {300000, 300000};
        EXPECT_EQ(grabar(venta, {}), "");
    }
    std::unique_ptr<clsConexion> db = crear_empresa(GetParam());

    std::string grabar(const Comprobante& c, OpcionesGrabar o) {
        o.nuevo = true;
        o.hoy = HOY;
        return GrabarComprobante(*db, c, o).desenlace.mensaje();
    }
    static Comprobante con_lineas(const AsientoGenerado& a, Fecha f, const std::string& numero) {
        Comprobante c = compra(numero);
        c.documento = "001";
        c.libro = "CONTABLES";
        c.doc_libro = " ";
        c.num_ref = c.rut_persona = c.nombre = "";
        c.fecha_factura.reset();
        c.f_comp = f;
        c.lineas.clear();
        for (const LineaNumerada& l : a.lineas) c.lineas.push_back(l.linea);
        c.totales = a.totales;
        return c;
    }
    void cerrar() {
        const auto cierre =
            generar_lineas_cierre(*db, {1, fecha(2024, 12, 31), "CIERRE", "302001", "302002", {}, {}});
        ASSERT_EQ(grabar(con_lineas(cierre.asiento, fecha(2024, 12, 31), "9"),
                         {.registrar_cierre = true, .anio = 2024}),
                  "");
        ASSERT_EQ(cerrar_anio_contable(*db, 1, HOY).mensaje, "Cierre Anual de 2024 Completado con éxito");
    }
    std::string abrir(const std::string& norma, const std::string& numero) {
        const auto r = generar_apertura(*db, {1, 2025, norma, "APERTURA", false});
        Comprobante c = con_lineas(r.asiento, fecha(2025, 1, 1), numero);
        c.apertura = true;
        c.ifrs = norma;
        return grabar(c, {});
    }
    std::string todo() {
        return filas(*db,
                     "select f_comp,documento,num_docum,t_debe,concepto,apertura,ifrs,estado from ctcquorvel"
                     " order by f_comp,num_docum") +
               "/" +
               filas(*db,
                     "select f_comp,num_docum,secuencia,centro,auxiliar,debe_nacional,haber_nacional from"
                     " ctdquorvel order by f_comp,num_docum,secuencia") +
               "/" + filas(*db, "select * from ctmconfigu order by anio") + "/" +
               filas(*db, "select documento, ultimo_emitido from adxemp_doc order by documento");
    }
};
INSTANTIATE_TEST_SUITE_P(Motores, Reabrir, ::testing::ValuesIn(MOTORES),
                         [](const auto& m) { return nombre(m.param); });

} // namespace

TEST_P(Reabrir, TakesBackTheCloseAndClosesAlike) {
    EXPECT_EQ(reabrir_anio(*db, 1, 1, HOY).mensaje(), "No hay un año cerrado que reabrir");
    ejecutar(*db, "update adxemp_doc set ultimo_emitido='2' where documento='002'");
    const std::string antes = todo();
    cerrar();
    ASSERT_EQ(abrir("1", "1"), "");
    EXPECT_NE(abrir("1", "2").find("ya tiene una apertura de esta norma"), std::string::npos);
    ASSERT_EQ(abrir("2", "3"), "");
    const std::string cerrado = todo();
    const Reapertura r = leer_reapertura(*db, 1);
    EXPECT_EQ(r.anio, 2024);
    EXPECT_EQ(r.aperturas.size(), 2U);
    EXPECT_EQ(r.otros, 0);
    ASSERT_EQ(reabrir_anio(*db, 1, 2, HOY).mensaje(), "");
    EXPECT_EQ(todo(), antes);
    EXPECT_EQ(romper_cadena(*db, 1), std::nullopt);
    EXPECT_EQ(filas(*db,
                    "select operacion from ctdhistoria where numero>(select max(numero) - 4 from ctdhistoria)"
                    " order by numero"),
              "eliminado;eliminado;eliminado;año reabierto: 2024");
    cerrar();
    ASSERT_EQ(abrir("1", "1"), "");
    ASSERT_EQ(abrir("2", "3"), "");
    EXPECT_EQ(todo(), cerrado);
}

TEST_P(Reabrir, KeepsAYearThatHasBegunAndIsAllOrNothing) {
    cerrar();
    ASSERT_EQ(abrir("1", "1"), "");
    Comprobante enero = compra("5");
    enero.f_comp = fecha(2025, 1, 15);
    enero.num_ref = "77";
    ASSERT_EQ(grabar(enero, {}), "");
    const std::string antes = todo();
    ejecutar(*db, "update ctcquorvel set bloqueo_usuario=2 where num_docum='9'");
    EXPECT_NE(reabrir_anio(*db, 1, 1, HOY).mensaje().find("Otro usuario tiene abierto"), std::string::npos);
    ejecutar(*db, "update ctcquorvel set bloqueo_usuario=0");
    bloquear_mes(*db, 1, 1, 2024, 12, true);
    EXPECT_NE(reabrir_anio(*db, 1, 1, HOY).mensaje().find("El mes 12/2024 está bloqueado"),
              std::string::npos);
    bloquear_mes(*db, 1, 1, 2024, 12, false);
    EXPECT_EQ(todo(), antes);
    const std::string rehacer = por_rehacer(leer_reapertura(*db, 1));
    EXPECT_NE(rehacer.find("que queda: ábrala y genérela otra vez"), std::string::npos) << rehacer;
    EXPECT_TRUE(
        rehacer.ends_with("configuración del año 2025, que al cerrar se copia otra vez de la del 2024"));
    ASSERT_EQ(reabrir_anio(*db, 1, 1, HOY).mensaje(), "");
    EXPECT_EQ(filas(*db, "select num_docum from ctcquorvel order by f_comp, num_docum"), "1;2;1;5");
    EXPECT_EQ(filas(*db, "select anio from ctmconfigu"), "2024");
    EXPECT_EQ(romper_cadena(*db, 1), std::nullopt);
}
