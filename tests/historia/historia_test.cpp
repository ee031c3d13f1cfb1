// Goal: each change of a voucher leaves exactly one version, and a history that was tampered with says where.
// Method: a voucher's life on both engines, compared with what the history tells; then the rows are attacked.
#include "apoyo/comprobante.h"
#include "apoyo/sesion_vigilada.h"
#include "apoyo/sesiones.h"
#include "historia/cadena.h"
#include "historia/celdas.h"
#include "historia/comenzar.h"
#include "historia/comparar.h"
#include "historia/leer.h"
#include "interchange/cheque.h"
#include "voucher/cargar.h"
#include "voucher/de_version.h"
#include "voucher/deshacer.h"
#include "voucher/grabar.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <thread>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

class Historia : public ::testing::TestWithParam<Motor> {
protected:
    Historia() { comenzar_historia(*db, 1, 1); }
    const std::string conexion = conexion_empresa(GetParam());
    std::unique_ptr<clsConexion> db = abrir_sesion(conexion);

    std::string huella(const Comprobante& c) {
        const auto g = leer_guardado(*db, c.clave());
        return g ? g->huella : "";
    }
    ResultadoGrabar grabar(const Comprobante& c, OpcionesGrabar o) {
        o.hoy = HOY;
        if (!o.nuevo) o.huella = huella(c);
        return GrabarComprobante(*db, c, o);
    }
    std::string nuevo(const Comprobante& c) { return grabar(c, {.nuevo = true}).desenlace.mensaje(); }
    std::string eliminar(const Comprobante& c, const char* como = operacion::ELIMINADO) {
        return EliminarComprobante(*db, c.clave(), 2, huella(c), como).desenlace.mensaje();
    }
    /// "nuevo 1 002;anulado 2": operations in their order with who did them.
    std::string operaciones() {
        return filas(*db, "select operacion, usuario from ctdhistoria where empresa=1 order by numero");
    }
    std::string rota() { return romper_cadena(*db, 1).value_or("entera"); }
    /// Five vouchers, the third saved once more.
    void cinco() {
        for (const char* n : {"1", "2", "3", "4", "5"}) ASSERT_EQ(nuevo(compra(n)), "");
        Comprobante c = compra("3");
        c.concepto = "Otra glosa";
        ASSERT_EQ(grabar(c, {}).desenlace.mensaje(), "");
    }
};
std::string como(const ::testing::TestParamInfo<Motor>& m) { return nombre(m.param); }
INSTANTIATE_TEST_SUITE_P(Motores, Historia, ::testing::ValuesIn(MOTORES), como);

const std::string CLAVE = "2024-03-20|002|01|1";

} // namespace

TEST_P(Historia, TellsAVouchersLife) {
    Comprobante c = compra();
    c.comprobante_adjunto = 7;
    c.adjuntos = {"a \"b\".pdf"};
    ASSERT_EQ(
        grabar(c, {.nuevo = true,
                   .sumar_adjunto = [](auto de, auto& n) { return std::to_string(de) + n.substr(0, 1); }})
            .desenlace.mensaje(),
        "");
    c.usuario = 2;
    c.lineas[1].glosa = "línea nueva";
    ASSERT_EQ(grabar(c, {}).desenlace.mensaje(), "");
    ASSERT_EQ(GrabarCheque(*db, c.clave(), {"77", "BANCO", "1-2", "ROBLE", HOY, 1, 0}, 2).mensaje(), "");
    ASSERT_EQ(AnularComprobante(*db, c, HOY, huella(c)).mensaje(), "");
    EXPECT_EQ(operaciones(), "nuevo|1;grabado|2;cheque|2;anulado|2");
    EXPECT_EQ(rota(), "entera");
    const auto versiones = leer_versiones(*db, 1, CLAVE);
    ASSERT_EQ(versiones.size(), 4U);
    EXPECT_EQ(versiones[0].operacion, "anulado");
    EXPECT_FALSE(versiones[0].maquina.empty());
    EXPECT_TRUE(std::regex_match(versiones[0].momento, std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)")));
    const auto primera = leer_version(*db, 1, 1), ultima = leer_version(*db, 1, 4);
    EXPECT_EQ(primera->sumas, "a \"b\".pdf\t7a\n");
    EXPECT_NE(primera->adjuntos.find(R"(a \"b\".pdf)"), std::string::npos);
    EXPECT_NE(leer_version(*db, 1, 2)->lineas.find("línea nueva"), std::string::npos);
    EXPECT_NE(leer_version(*db, 1, 3)->cabecera.find("ROBLE"), std::string::npos);
    EXPECT_EQ(ultima->lineas, "[]");
}

TEST_P(Historia, KeepsWhatWasDeletedAndNothingThatFailed) {
    ASSERT_EQ(nuevo(compra("1")), "");
    ASSERT_EQ(nuevo(compra("2")), "");
    EXPECT_NE(nuevo(compra("2")), "");
    EXPECT_NE(EliminarComprobante(*db, compra("1").clave(), 1, "otra").desenlace.mensaje(), "");
    ASSERT_EQ(eliminar(compra("1")), "");
    ASSERT_EQ(eliminar(compra("2"), operacion::CORTADO), "");
    EXPECT_EQ(operaciones(), "nuevo|1;nuevo|1;eliminado|2;cortado|2");
    EXPECT_NE(leer_version(*db, 1, 3)->lineas.find("119000"), std::string::npos);
    ASSERT_EQ(leer_eliminados(*db, 1).size(), 2U);
    ASSERT_EQ(nuevo(compra("1")), ""); // it is there again
    const auto quitados = leer_eliminados(*db, 1);
    ASSERT_EQ(quitados.size(), 1U);
    EXPECT_EQ(quitados[0].clave, "2024-03-20|002|01|2");
    EXPECT_EQ(rota(), "entera");
}

TEST_P(Historia, AVersionIsTheVoucherAsItStood) {
    Comprobante c = compra();
    c.cotizacion = Decimal::leer("890,55");
    c.fecha_pago = fecha(2024, 4, 1);
    c.comprobante_adjunto = 7;
    c.adjuntos = {"a.pdf"};
    ASSERT_EQ(nuevo(c), "");
    ASSERT_EQ(GrabarCheque(*db, c.clave(), {"77", "BANCO", "1-2", "ROBLE", HOY, 1, 0}, 2).mensaje(), "");
    const Clave clave = c.clave();
    const auto guardado = leer_cabecera(*db, 1, clave.f_comp, clave.documento, clave.num_docum);
    const auto lineas = leer_lineas(*db, clave);
    ASSERT_EQ(eliminar(c), "");
    const auto v = leer_version(*db, 1, 3);
    const auto vuelto = comprobante_de_version(1, *v);
    ASSERT_TRUE(vuelto);
    EXPECT_EQ(vuelto->clave(), clave);
    EXPECT_EQ(vuelto->cheque, guardado->cheque);
    EXPECT_EQ(vuelto->adjuntos, c.adjuntos);
    for (const auto campo : {&Comprobante::concepto, &Comprobante::num_ref, &Comprobante::libro,
                             &Comprobante::moneda, &Comprobante::rut_persona})
        EXPECT_EQ((*vuelto).*campo, (*guardado).*campo);
    EXPECT_EQ(vuelto->cotizacion, c.cotizacion);
    EXPECT_EQ(vuelto->totales, guardado->totales);
    EXPECT_EQ(vuelto->fecha_pago, c.fecha_pago);
    EXPECT_EQ(vuelto->lineas, lineas);
    ASSERT_EQ(nuevo(*vuelto), ""); // and saved again it is the same one
    EXPECT_TRUE(mismas_celdas(leer_version(*db, 1, 4)->lineas, v->lineas));
}

TEST_P(Historia, ComparesByCell) {
    Comprobante c = compra();
    ASSERT_EQ(nuevo(c), "");
    c.concepto = "Otra";
    c.lineas.insert(c.lineas.begin() + 1, {"501001", "", 5000, {}, "flete"});
    c.lineas[0].debe = 95000;
    ASSERT_EQ(grabar(c, {}).desenlace.mensaje(), "");
    std::string distintas;
    for (const CeldaComparada& x : comparar_versiones(*leer_version(*db, 1, 1), *leer_version(*db, 1, 2)))
        if (x.distinta()) distintas += x.donde + ":" + x.antes + ">" + x.ahora + ";";
    EXPECT_EQ(distintas,
              "Glosa:Compra de materiales>Otra;Línea 1, Debe:100.000>95.000;"
              "Línea 2, Cuenta:>501001;Línea 2, Debe:>5.000;Línea 2, Haber:>0;Línea 2, Glosa:>flete;");
}

TEST_P(Historia, WhatIsClosedTakesNoChange) {
    for (const char* n : {"1", "2"}) ASSERT_EQ(nuevo(compra(n)), "");
    bloquear_mes(*db, 1, 1, 2024, 3, true);
    EXPECT_EQ(nuevo(compra("3")), "") << "the company does not protect what is closed";
    proteger(*db, 1, 1, true, true);
    bloquear_mes(*db, 1, 1, 2024, 3, true); // changes nothing
    const std::string antes = filas(*db, "select count(*) from ctdhistoria");
    const auto bloqueado = [](const std::string& e) {
        return e.starts_with("El mes 03/2024 está bloqueado");
    };
    EXPECT_TRUE(bloqueado(nuevo(compra("4"))));
    EXPECT_TRUE(bloqueado(grabar(compra("1"), {}).desenlace.mensaje()));
    EXPECT_TRUE(bloqueado(eliminar(compra("1"))));
    EXPECT_TRUE(bloqueado(AnularComprobante(*db, compra("1"), HOY, huella(compra("1"))).mensaje()));
    Comprobante abril = compra("4");
    abril.f_comp = fecha(2024, 4, 1);
    EXPECT_EQ(nuevo(abril), "");
    bloquear_mes(*db, 1, 2, 2024, 3, false);
    EXPECT_EQ(eliminar(compra("1")), "");
    ejecutar(*db, "update ctmconfigu set anio=2025, f_digi_inicial=#01/01/2025#, f_digi_final=#12/31/2025#");
    const auto cerrado = [](const std::string& e) {
        return e.starts_with("Año del Comprobante ya esta cerrado ") &&
               e.find("Reabrir") != std::string::npos;
    };
    EXPECT_TRUE(cerrado(eliminar(compra("2"))));
    EXPECT_TRUE(cerrado(AnularComprobante(*db, compra("2"), HOY, huella(compra("2"))).mensaje()));
    proteger(*db, 1, 1, true, false);
    EXPECT_EQ(eliminar(compra("2")), "");
    EXPECT_NE(operaciones().find("mes desbloqueado: 2024-03|2"), std::string::npos);
    EXPECT_EQ(rota(), "entera");
}

TEST_P(Historia, AMonthThatIsLockedMeanwhileStopsTheSave) {
    proteger(*db, 1, 1, true, true);
    auto vigilada = std::make_unique<SesionVigilada>(abrir_sesion(conexion));
    // after the save has looked, and only where another session gets in between at all
    if (GetParam() == Motor::sqlite) return;
    vigilada->antes = [&](const std::string& sql) {
        if (sql.starts_with("insert into ctcQuorvel")) bloquear_mes(*db, 1, 2, 2024, 3, true);
    };
    EXPECT_EQ(GrabarComprobante(*vigilada, compra(), {.nuevo = true, .hoy = HOY}).desenlace.mensaje(),
              PASO_HISTORIA);
    EXPECT_EQ(filas(*db, "select count(*) from ctcquorvel"), "0");
}

TEST_P(Historia, NamesTheFirstBreak) {
    struct {
        const char *ataque, *dice;
    } const ATAQUES[] = {
        {"update ctdhistoria set cabecera='[]' where numero=2",
         "la versión 2 (nuevo, comprobante 2024-03-20|002|01|2) "
         "fue cambiada"},
        {"update ctdhistoria set usuario=9 where numero=6",
         "la versión 6 (grabado, comprobante 2024-03-20|002|01|3) "
         "fue cambiada"},
        {"update ctdhistoria set momento='2020-01-01 00:00:00' where numero in (3,4)",
         "la versión 3 (nuevo, comprobante 2024-03-20|002|01|3) fue cambiada"},
        {"delete from ctdhistoria where numero=4", "falta la versión 4"},
        {"delete from ctdhistoria where numero=1", "falta la versión 1"},
        {"delete from ctdhistoria where numero>4",
         "faltan las últimas versiones: llegaba a la 6 y hay hasta la 4"},
        {"delete from ctdhistoria", "faltan las últimas versiones: llegaba a la 6 y hay hasta la 0"},
        {"delete from ctmhistoria", "falta su cabecera en ctmhistoria"},
        {"update ctmhistoria set numero=5", "su cabecera es de antes de la versión 6"},
        {"update ctmhistoria set huella='x'",
         "la versión 6 (grabado, comprobante 2024-03-20|002|01|3) fue cambiada"},
    };
    cinco();
    EXPECT_EQ(rota(), "entera");
    for (const auto& a : ATAQUES) {
        Transaccion t(*db); // undone behind each attack
        ejecutar(*db, a.ataque);
        EXPECT_EQ(rota(), a.dice) << a.ataque;
    }
}

TEST_P(Historia, ACodeWrittenDownTellsAnEarlierCopy) {
    cinco();
    const std::string codigo = codigo_historia(*db, 1);
    EXPECT_TRUE(codigo.starts_with("1-6-")) << codigo;
    EXPECT_EQ(comparar_codigo(*db, codigo), "");
    ASSERT_EQ(nuevo(compra("6")), ""); // goes on behind it
    EXPECT_EQ(comparar_codigo(*db, codigo), "");
    for (const char* otro : {"6", "1-6-0000", "1-6-00000000"}) EXPECT_NE(comparar_codigo(*db, otro), "");
    EXPECT_EQ(codigo_historia(*db, 1, fecha(2024, 3, 1), fecha(2024, 3, 31)), codigo_historia(*db, 1));
    EXPECT_EQ(codigo_historia(*db, 1, fecha(2024, 4, 1), fecha(2024, 4, 30)), "");
    // a copy from before version 6, as such and after other work
    ejecutar(*db, "delete from ctdhistoria where numero>5");
    ejecutar(*db, "update ctmhistoria set numero=5, huella='" + huella_de(1, *leer_version(*db, 1, 5)) + "'");
    EXPECT_EQ(rota(), "entera");
    EXPECT_NE(comparar_codigo(*db, codigo).find("respaldo anterior"), std::string::npos);
    ASSERT_EQ(eliminar(compra("5")), "");
    EXPECT_NE(comparar_codigo(*db, codigo).find("no es la que había"), std::string::npos);
}

TEST_P(Historia, BeginsWithWhatStandsAndIsSilentWhereItIsOff) {
    ejecutar(*db, "delete from ctmhistoria");
    cinco();
    EXPECT_EQ(operaciones(), "");
    EXPECT_EQ(comenzar_historia(*db, 1, 2), 5);
    EXPECT_EQ(comenzar_historia(*db, 1, 2), 0);
    EXPECT_EQ(operaciones(), "inicio|2;inicio|2;inicio|2;inicio|2;inicio|2");
    EXPECT_NE(leer_version(*db, 1, 3)->cabecera.find("Otra glosa"), std::string::npos);
    EXPECT_EQ(rota(), "entera");
    ejecutar(*db, "update ctmhistoria set guarda=0");
    ASSERT_EQ(nuevo(compra("6")), "");
    ejecutar(*db, "drop table ctdhistoria");
    ejecutar(*db, "drop table ctmhistoria");
    db = abrir_sesion(conexion);
    EXPECT_EQ(nuevo(compra("7")), "");
    EXPECT_EQ(codigo_historia(*db, 1), "");
    EXPECT_EQ(rota(), "entera");
}

TEST_P(Historia, AnImportIsUndoneWholeOrNotAtAll) {
    const std::string grupo = nuevo_grupo();
    for (const char* n : {"1", "2", "3"})
        ASSERT_EQ(grabar(compra(n), {.nuevo = true, .operacion = operacion::IMPORTADO, .grupo = grupo})
                      .desenlace.mensaje(),
                  "");
    ASSERT_EQ(nuevo(compra("4")), "");
    Comprobante c = compra("2");
    c.concepto = "Otra";
    ASSERT_EQ(grabar(c, {}).desenlace.mensaje(), "");
    EXPECT_EQ(leer_grupo(*db, 1, grupo).comprobantes.size(), 3U);
    EXPECT_EQ(deshacer_grupo(*db, 1, 2, grupo).mensaje(),
              "Cambió después el comprobante documento 002, Nro.2, 20/03/2024");
    EXPECT_EQ(filas(*db, "select num_docum from ctcquorvel order by num_docum"), "1;2;3;4");
    ejecutar(*db, "delete from ctdhistoria where numero=5"); // as if nobody had changed it
    ejecutar(*db, "update ctcquorvel set bloqueo_usuario=1 where num_docum='3'");
    EXPECT_NE(deshacer_grupo(*db, 1, 2, grupo).mensaje().find("tiene abierto"), std::string::npos);
    EXPECT_EQ(filas(*db, "select count(*) from ctcquorvel"), "4");
    ejecutar(*db, "update ctcquorvel set bloqueo_usuario=0");
    EXPECT_EQ(deshacer_grupo(*db, 1, 2, grupo).mensaje(), "");
    EXPECT_EQ(filas(*db, "select num_docum from ctcquorvel"), "4");
    EXPECT_NE(deshacer_grupo(*db, 1, 2, grupo).mensaje(), "");
    EXPECT_NE(deshacer_grupo(*db, 1, 2, "").mensaje(), "");
}

TEST_P(Historia, StaysOneChainUnderTwoWriters) {
    constexpr int CADA_UNO = 25;
    std::vector<std::thread> manos;
    for (const int mano : {1, 2})
        manos.emplace_back([&, mano] {
            const auto propia = abrir_sesion(conexion);
            for (int i = 0; i < CADA_UNO; ++i)
                EXPECT_EQ(GrabarComprobante(*propia, compra(std::to_string(mano * 100 + i)),
                                            {.nuevo = true, .hoy = HOY})
                              .desenlace.mensaje(),
                          "");
        });
    for (std::thread& m : manos) m.join();
    EXPECT_EQ(filas(*db, "select count(*), max(numero) from ctdhistoria"), "50|50");
    EXPECT_EQ(rota(), "entera");
}

TEST_P(Historia, NoChangeOfAVoucherPassesItBy) {
    auto vigilada = std::make_unique<SesionVigilada>(abrir_sesion(conexion));
    std::string orden; // what a change wrote: h header, l line, v version
    const std::regex cambia(R"(^\s*(insert into|update|delete from)\s+(ct[cd]quorvel|ctdhistoria)\b)",
                            std::regex::icase);
    vigilada->antes = [&](const std::string& sql) {
        std::smatch m;
        if (sql.find("subsistema=subsistema") == std::string::npos && std::regex_search(sql, m, cambia))
            orden += m[2] == "ctdhistoria" ? 'v' : sql.find("ctd") != std::string::npos ? 'l' : 'h';
    };
    const auto paso = [&](auto&& cambio) {
        orden.clear();
        cambio();
        return std::count(orden.begin(), orden.end(), 'v') == 1 && orden.size() > 1;
    };
    const Comprobante c = compra();
    EXPECT_TRUE(paso([&] { (void)GrabarComprobante(*vigilada, c, {.nuevo = true, .hoy = HOY}); })) << orden;
    EXPECT_TRUE(paso([&] { (void)GrabarComprobante(*vigilada, c, {.hoy = HOY, .huella = huella(c)}); }))
        << orden;
    EXPECT_TRUE(paso([&] {
        (void)GrabarCheque(*vigilada, c.clave(), {"7", "B", "C", "D", {}, 0, 0});
    })) << orden;
    EXPECT_TRUE(paso([&] { (void)AnularComprobante(*vigilada, c, HOY, huella(c)); })) << orden;
    EXPECT_TRUE(paso([&] { (void)EliminarComprobante(*vigilada, c.clave(), 1, huella(c)); })) << orden;
    EXPECT_EQ(rota(), "entera");
}
