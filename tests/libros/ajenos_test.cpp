// Goal: rows that other programs put into the shared tables are read as they are meant, on both engines.
// Method: the same company twice, once with what is empty stored as empty and once as null; whatever a person
// does with it must come out alike.
#include "apoyo/comprobante.h"
#include "apoyo/pantalla.h"
#include "dbtools/datos.h"
#include "dbtools/guion.h"
#include "dbtools/revisar.h"
#include "interchange/archivo_comprobante.h"
#include "libros/balance.h"
#include "libros/diario.h"
#include "libros/mayor.h"
#include "libros/mensual.h"
#include "screen/campos.h"
#include "screen/papeles/frmImprimir.h"
#include "yearend/apertura.h"
#include "yearend/cierre.h"

#include <gtest/gtest.h>

using namespace quorvel::libros;
using namespace quorvel;
using namespace quorvel::apoyo;
using pruebas::Pantalla;

namespace {

struct Apunte {
    const char *cuenta, *auxiliar;
    int debe, haber;
};

void voucher(clsConexion& db, const std::string& numero, const std::string& num_ref,
             const std::vector<Apunte>& apuntes, const std::string& totales) {
    const std::string clave = "1,#03/05/2024#,'001','" + numero + "',";
    ejecutar(db,
             "insert into ctcquorvel(empresa,f_comp,documento,num_docum,t_debe,t_haber,num_ref) values (" +
                 clave + totales + ",'" + num_ref + "')");
    int i = 0;
    for (const Apunte& a : apuntes)
        ejecutar(db, "insert into ctdquorvel(empresa,f_comp,documento,num_docum,secuencia,centro,auxiliar,"
                     "debe_nacional,haber_nacional) values (" +
                         clave + std::to_string(++i) + ",'" + a.cuenta + "','" + a.auxiliar + "'," +
                         std::to_string(a.debe) + "," + std::to_string(a.haber) + ")");
}

/// Three vouchers; of the first two, nothing that is empty is left so.
void sembrar(clsConexion& db, bool nulos) {
    voucher(db, "5", "", {{"501001", "", 500, 0}, {"101001", "", 0, 500}}, "500,500");
    voucher(db, "7", "F1", {{"103001", "000012", 100, 0}, {"301001", "", 0, 100}}, "100,100");
    voucher(db, "6", "", {{"501001", "", 300, 0}, {"101001", "", 0, 300}}, "300,300");
    if (!nulos) return;
    for (const dbtools::Tabla& t : dbtools::leer_esquema(dbtools::leer_dato("schema/sqlite.sql")).tablas)
        for (const std::string& columna : t.anulables)
            if (t.nombre == "ctcquorvel" || t.nombre == "ctdquorvel")
                ejecutar(db, "update " + t.nombre + " set " + columna +
                                 "=null where num_docum<>'6' and cast(" + columna +
                                 " as char(20)) in ('','0')");
}

std::string lineas(const ResultadoAsiento& r) {
    std::string texto = r.desenlace.mensaje();
    for (const LineaNumerada& n : r.asiento.lineas)
        texto += n.linea.centro + "|" + n.linea.auxiliar + "|" + n.linea.debe->plano() + "|" +
                 n.linea.haber->plano() + "|" + n.linea.num_ref + "\n";
    return texto;
}

std::string los_libros(clsConexion& db) {
    const PedidoLibro p{.empresa = 1,
                        .desde = fecha(2024, 1, 1),
                        .hasta = fecha(2024, 12, 31),
                        .norma = "1",
                        .por_auxiliar = true};
    std::string texto = balance_csv(leer_balance(db, p)) +
                        totales_mensuales_csv(leer_totales_mensuales(db, 1, 2024)) +
                        std::to_string(totales_diario(db, p).debe);
    for (const RenglonDiario& r : leer_diario(db, p, {})) texto += diario_csv(r) + "\n";
    for (const CuentaMayor& c : leer_mayor(db, p)) {
        texto += mayor_csv(c) + "\n";
        for (const Movimiento& m : leer_movimientos(db, p, movimientos_de(c, p), 0, {}))
            texto += mayor_csv(c, m) + "\n";
    }
    for (const bool por_documento : {false, true})
        texto += lineas(generar_apertura(db, {1, 2025, "1", "APERTURA", por_documento}));
    return texto +
           lineas(generar_lineas_cierre(db, {1, fecha(2024, 12, 31), "CIERRE", "302001", "302002", {}, {}}));
}

/// Everything that is done with the vouchers, told in words.
std::string recorrido(Motor motor, bool nulos) {
    Pantalla p(motor);
    sembrar(*p.db, nulos);
    std::string texto = los_libros(*p.db);
    for (const std::string& hallazgo : dbtools::revisar(p.conexion)) texto += hallazgo + "\n";
    p.abrir();
    const auto mostrar = [&] { texto += bytes_de_comprobante(leer_pantalla(p.f), "E", "M") + "\n"; };
    p.buscar("5");
    mostrar();
    p.escritorio.al_abrir([](ui::Form& f) { dynamic_cast<frmImprimir&>(f).cmdOK.press(); });
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Print);
    texto += filas(*p.reporte, "select secuencia, concepto, cuenta, auxiliar, glosa from ctcQuorvel");
    p.escribir("txtconcepto", "Completado");
    p.elegir("cmblibro", "CONTABLES");
    p.guardar();
    p.buscar("7");
    mostrar();
    p.escritorio.responder(ui::Answer::yes);
    p.pulsar("mnuAnular");
    for (const std::string& mensaje : p.mensajes()) texto += mensaje + "\n";
    return texto +
           p.sql("select num_docum, concepto, estado, libro, moneda, ifrs, comprobante_adjunto, "
                 "nro_correlativo, t_debe from ctcquorvel where num_docum<>'7' order by num_docum") +
           p.sql("select num_docum, estado, t_debe from ctcquorvel where num_docum='7'") +
           p.sql("select num_docum, centro, auxiliar, glosa, num_ref from ctdquorvel where num_docum='5'");
}

class Ajenos : public ::testing::TestWithParam<Motor> {};
INSTANTIATE_TEST_SUITE_P(Motores, Ajenos, ::testing::ValuesIn(MOTORES),
                         [](const auto& m) { return nombre(m.param); });

TEST_P(Ajenos, NullIsReadAsEmpty) {
    const std::string vacios = recorrido(GetParam(), false);
    EXPECT_EQ(recorrido(GetParam(), true), vacios);
    for (const char* parte : {"Comprobante Ingresado y Mayorizado\nEsta seguro", "Comprobante Anulado\n",
                              "103001|000012|100|0|F1\n", "5|501001|||;"})
        EXPECT_NE(vacios.find(parte), std::string::npos) << parte << "\n" << vacios;
}

TEST_P(Ajenos, KeysAndAmountsAreNeverNull) {
    Pantalla p(GetParam());
    sembrar(*p.db, true);
    for (const char* columna : {"num_docum", "centro", "debe_nacional", "haber_nacional"})
        EXPECT_EQ(p.db->executesql(std::string("update ctdquorvel set ") + columna + "=null"), 0) << columna;
}

TEST_P(Ajenos, WhatTheScreenDoesNotKnowStaysAsItIs) {
    Pantalla p(GetParam());
    sembrar(*p.db, false);
    ejecutar(*p.db,
             "update ctcquorvel set ifrs='3', tasa_impuesto_otro='20.5', libro='COMPRAS', concepto='c'");
    p.abrir();
    p.buscar("5");
    EXPECT_EQ(p.f.txttasa_impuesto_otro.Text(), "20.5");
    EXPECT_EQ(p.f.cmbifrs.ListIndex(), 0);
    p.elegir("cmblibro", "CONTABLES");
    p.guardar();
    EXPECT_EQ(p.mensajes().back(), "Comprobante Ingresado y Mayorizado");
    EXPECT_EQ(p.sql("select ifrs, tasa_impuesto_otro, libro from ctcquorvel where num_docum='5'"),
              "3|20.5|CONTABLES");
    p.f.cmbifrs.SetListIndex(2);
    p.guardar();
    EXPECT_EQ(p.sql("select ifrs from ctcquorvel where num_docum='5'"), "2");
}

TEST_P(Ajenos, TotalsThatContradictEachOtherGiveWayToTheLines) {
    Pantalla p(GetParam());
    voucher(*p.db, "5", "", {{"501001", "", 500, 0}, {"101001", "", 0, 500}}, "500,400");
    ejecutar(*p.db, "update ctcquorvel set libro='CONTABLES', concepto='c'");
    p.abrir();
    p.buscar("5");
    EXPECT_EQ(p.totales(), "500|400");
    p.guardar();
    EXPECT_EQ(p.mensajes().back(), "Comprobante descuadrado");
    EXPECT_TRUE(p.celda(0, 3, "600"));
    EXPECT_TRUE(p.celda(1, 4, "600"));
    EXPECT_EQ(p.totales(), "600|600");
    p.guardar();
    EXPECT_EQ(p.mensajes().back(), "Comprobante Ingresado y Mayorizado");
}

TEST_P(Ajenos, AnAccountThatAsksForAnAuxiliaryAsksPaddedToo) {
    Pantalla p(GetParam());
    ejecutar(*p.db, "update ctmcentros set req_auxiliar='1 ' where req_auxiliar='1'");
    ejecutar(*p.db, "update ctmcentros set req_auxiliar='0 ' where req_auxiliar='0'");
    voucher(*p.db, "5", "", {{"103001", "", 500, 0}, {"101001", "", 0, 500}}, "500,500");
    ejecutar(*p.db, "update ctcquorvel set libro='CONTABLES', concepto='c'");
    EXPECT_EQ(req_aux(*p.db, "103001") + req_aux(*p.db, "101001"), "10");
    p.abrir();
    p.buscar("5");
    p.guardar();
    EXPECT_EQ(p.mensajes().back(), "Cuenta 103001 requiere auxiliar");
    EXPECT_FALSE(p.celda(1, 2, "12"));
    EXPECT_EQ(p.mensajes().back(), "Cuenta no requiere auxiliar");
}

/// Only the embedded engine stores a fraction in a column of whole pesos.
TEST(AjenosSqlite, FractionsAreRoundedWhenTheyAreTakenOut) {
    Pantalla p;
    voucher(*p.db, "5", "", {{"501001", "", 500, 0}, {"101001", "", 0, 500}}, "500,500");
    ejecutar(*p.db, "update ctdquorvel set debe_nacional=1000.5 where secuencia=1");
    ejecutar(*p.db, "insert into ctmsdcenth(empresa,anio,centro,debe3) values (1,2024,'501001',2000)");
    p.abrir();
    p.buscar("5");
    p.escritorio.responder(ui::Answer::yes);
    p.pulsar("mnuAnular");
    EXPECT_EQ(p.sql("select debe3 from ctmsdcenth where centro='501001'"), "999");
}

} // namespace
