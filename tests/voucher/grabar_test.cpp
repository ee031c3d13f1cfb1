// Goal: a voucher is written whole or not at all. Method: the stored rows are compared after each step of a
// voucher's life, on both engines.
#include "apoyo/comprobante.h"
#include "apoyo/sesion_vigilada.h"
#include "apoyo/sesiones.h"
#include "voucher/bloqueo.h"
#include "voucher/cargar.h"
#include "voucher/chart.h"
#include "voucher/grabar.h"
#include "voucher/numeracion.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

constexpr const char* LINEAS = "select secuencia, centro, auxiliar, debe_nacional, haber_nacional, glosa, "
                               "centro2, conciliado, num_ref, codigo_otro_impuesto, tasa_impuesto_otro from "
                               "ctdquorvel order by num_docum, secuencia";
constexpr const char* TOTALES =
    "select num_docum, t_debe, t_haber, estado from ctcquorvel order by num_docum";

class Grabar : public ::testing::TestWithParam<Motor> {
protected:
    const std::string conexion = conexion_empresa(GetParam());
    std::unique_ptr<clsConexion> db = abrir_sesion(conexion);
    std::string rows(const std::string& sql) { return filas(*db, sql); }
    /// Of the voucher as it is stored now.
    std::string huella(const Comprobante& c) {
        const auto g = leer_guardado(*db, c.clave());
        return g ? g->huella : "";
    }
    std::string anular(const Comprobante& c, Fecha f = HOY) {
        return AnularComprobante(*db, c, f, huella(c)).mensaje();
    }
    std::string eliminar(const Comprobante& c) {
        return EliminarComprobante(*db, c.clave(), c.usuario, huella(c)).desenlace.mensaje();
    }
    std::string grabar(const Comprobante& c, OpcionesGrabar o) {
        o.hoy = HOY;
        if (!o.nuevo) o.huella = huella(c);
        return GrabarComprobante(*db, c, o).desenlace.mensaje();
    }
    std::string nuevo(const Comprobante& c) { return grabar(c, {.nuevo = true}); }
    /// Everything that a save may touch.
    std::string todo() {
        return rows(TOTALES) + "/" + rows("select concepto, usuario, comprobante_adjunto from ctcquorvel") +
               "/" + rows(LINEAS) + "/" +
               rows("select comprobante_adjunto, nombre from ctdcomprad order by correlativo") + "/" +
               rows("select ultimo_emitido from adxemp_doc order by documento") + "/" +
               rows("select num_docum_cierre from ctmconfigu") + "/" +
               rows("select centro, debe3, haber3 from ctmsdcenth order by centro") + "/" +
               rows("select centro, debe3, haber3 from ctmsdmayor order by centro") + "/" +
               rows("select num_docum from ftcfactura");
    }
    void saldos() {
        for (const char* c : {"5", "501", "501002", "2", "201", "201001"})
            ejecutar(*db, "insert into ctmsdcenth(empresa,anio,centro,debe3,haber3) values (1,2024,'" +
                              std::string(c) + "',500000,500000)");
        ejecutar(*db, "insert into ctmsdmayor(empresa,anio,centro,auxiliar,debe3,haber3) values "
                      "(1,2024,'201001','000013',0,119000)");
    }
};
std::string como(const ::testing::TestParamInfo<Motor>& m) { return nombre(m.param); }
INSTANTIATE_TEST_SUITE_P(Motores, Grabar, ::testing::ValuesIn(MOTORES), como);

/// Texts of the header that are read as they were saved.
constexpr std::string Comprobante::*TEXTOS[] = {
    &Comprobante::concepto,
    &Comprobante::libro,
    &Comprobante::doc_libro,
    &Comprobante::num_ref,
    &Comprobante::rut_persona,
    &Comprobante::nombre,
    &Comprobante::codigo_otro_impuesto,
    &Comprobante::tasa_impuesto_otro,
    &Comprobante::ifrs,
    &Comprobante::codigo_no_recuperable,
};
/// Each makes another voucher of a stored one.
constexpr void (*CAMBIOS[])(Comprobante&) = {
    [](Comprobante& c) { c.adjuntos.pop_back(); },   [](Comprobante& c) { c.lineas[1].glosa = "i"; },
    [](Comprobante& c) { c.lineas[0].debe = 1; },    [](Comprobante& c) { c.lineas[2].haber = 1; },
    [](Comprobante& c) { c.usuario = 2; },           [](Comprobante& c) { c.apertura = false; },
    [](Comprobante& c) { c.activo_fijo = true; },    [](Comprobante& c) { c.iva_activo_fijo = 1; },
    [](Comprobante& c) { c.monto_neto = 1; },        [](Comprobante& c) { c.monto_exento = 1; },
    [](Comprobante& c) { c.fecha_factura.reset(); }, [](Comprobante& c) { c.fecha_pago.reset(); },
    [](Comprobante& c) { c.fecha_pago = c.f_comp; }, [](Comprobante& c) { c.nro_correlativo = 1; },
    [](Comprobante& c) { c.cotizacion = 1; },
};

TEST_P(Grabar, SavedLoadedAndSavedAgain) {
    Comprobante c = compra();
    c.cotizacion = Decimal::leer("1.950,5");
    c.iva_activo_fijo = 1234;
    c.totales = {238000, 238000}; // labels that count the lines twice
    c.lineas[0].glosa = std::string(59, 'x') + "ñandú";
    c.adjuntos = {"b.pdf", "a'b.pdf"};
    c.comprobante_adjunto = 1;
    c.codigo_otro_impuesto = "024", c.tasa_impuesto_otro = "31.5", c.codigo_no_recuperable = "3";
    c.ifrs = "2", c.nro_correlativo = 77, c.apertura = true, c.monto_exento = 7;
    c.fecha_pago = fecha(2024, 4, 5);
    ASSERT_EQ(nuevo(c), "");
    EXPECT_EQ(rows(TOTALES), "1|119000|119000|P");
    EXPECT_EQ(rows(LINEAS), "1|501002||100000|0|" + std::string(59, 'x') + "ñ|||||;" +
                                "2|109001||19000|0|iva||S|||;"
                                "3|201001|000013|0|119000|factura|101001||9|024|31.50");
    EXPECT_EQ(rows("select ultimo_emitido, f_u_emision from adxemp_doc where documento='002'"),
              "1|2024-06-15");
    auto leido = leer_cabecera(*db, 1, *c.f_comp, "002", "1");
    ASSERT_TRUE(leido);
    EXPECT_EQ(leido->totales, (Totales{119000, 119000}));
    EXPECT_TRUE(leido->apertura && leido->monto_exento == 7 && leido->cotizacion == c.cotizacion);
    EXPECT_EQ(leer_adjuntos(*db, "1"), c.adjuntos);
    const auto grabado = [&](const Comprobante& o, Fecha hoy) {
        const auto r = grabado_sin_respuesta(*db, o, hoy);
        return r ? std::to_string(r->comprobante_adjunto) : "no";
    };
    EXPECT_EQ(grabado(c, HOY) + grabado(c, fecha(2024, 6, 16)), "1no");
    for (std::size_t i = 0; i < std::size(CAMBIOS); ++i) {
        Comprobante otro = c;
        CAMBIOS[i](otro);
        EXPECT_EQ(grabado(otro, HOY), "no") << i;
    }
    for (std::string Comprobante::*const texto : TEXTOS) {
        Comprobante otro = c;
        otro.*texto = "1";
        EXPECT_EQ((*leido).*texto, c.*texto);
        EXPECT_EQ(grabado(otro, HOY), "no") << c.*texto;
    }
    const auto lineas = leer_lineas(*db, c.clave());
    leido->lineas = lineas, leido->adjuntos = c.adjuntos;
    EXPECT_EQ(grabado(*leido, HOY), "1") << "read as it was saved";
    ejecutar(*db, "update ctcquorvel set estado='X'");
    EXPECT_EQ(grabado(c, HOY), "no");
    ejecutar(*db, "update ctcquorvel set estado='P'");
    leido->lineas = c.lineas, leido->adjuntos.clear();
    leido->lineas.pop_back();
    leido->lineas[0].debe.reset(), leido->lineas[0].haber = 19000;
    leido->concepto = "otra";
    leido->usuario = 2;
    ASSERT_EQ(grabar(*leido, {}), "");
    EXPECT_EQ(rows("select concepto, usuario, cotizacion, iva_activo_fijo, t_debe, comprobante_adjunto from "
                   "ctcquorvel"),
              "otra|2|1950.5|1234|19000|1");
    EXPECT_EQ(rows("select secuencia, debe_nacional, haber_nacional from ctdquorvel order by secuencia"),
              "1|0|19000;2|19000|0");
    EXPECT_TRUE(leer_adjuntos(*db, "1").empty()) << "the list was empty at the second save";
}

TEST_P(Grabar, NumbersAreProposedAndRecorded) {
    EXPECT_EQ(proponer_numero(*db, 1, "002", 2024), 1);
    EXPECT_EQ(proponer_correlativo(*db, 1, "COMPRAS", 2024, 3), 1);
    for (const char* n : {"1", "2", "10", "12A", "", "099"}) {
        Comprobante c = compra(n);
        c.nro_correlativo = 7;
        ASSERT_EQ(nuevo(c), "");
    }
    ejecutar(*db, "update ctcquorvel set f_comp=#12/31/2023# where num_docum='099'");
    EXPECT_EQ(proponer_numero(*db, 1, "002", 2024), 13);
    EXPECT_EQ(proponer_numero(*db, 1, "002", 2023), 100);
    EXPECT_EQ(proponer_numero(*db, 1, "0'2", 2024), 1);
    EXPECT_EQ(proponer_correlativo(*db, 1, "COMPRAS", 2024, 3), 8);
    EXPECT_EQ(proponer_correlativo(*db, 1, "COMPRAS", 2024, 4), 1);
    const auto ultimo = [&] { return rows("select ultimo_emitido from adxemp_doc where documento='002'"); };
    ejecutar(*db, "update adxemp_doc set ultimo_emitido='0'");
    ASSERT_EQ(grabar(compra("5"), {.nuevo = true, .numero_propuesto = 13}), "");
    EXPECT_EQ(ultimo(), "0");
    ASSERT_EQ(grabar(compra("14"), {.nuevo = true, .numero_propuesto = 13}), "");
    EXPECT_EQ(ultimo(), "14");
    const std::string antes = todo();
    EXPECT_EQ(grabar(compra("15"), {.nuevo = true, .registrar_cierre = true, .anio = 2030}),
              "Problemas al grabar datos de cirre anual")
        << "no such year";
    const std::pair<Campo, const char*> ilegibles[] = {{Campo::cotizacion, "Problemas al grabar cabecera"},
                                                       {Campo::detalle, "Problemas al grabar detalle"}};
    for (const auto& [campo, mensaje] : ilegibles) {
        Comprobante c = compra("15");
        c.ilegible = campo;
        EXPECT_EQ(nuevo(c), mensaje);
    }
    Comprobante medios = compra("15");
    medios.lineas[0].debe = medios.lineas[1].debe = Decimal::leer("0,5"), medios.lineas[2].haber = 1;
    EXPECT_EQ(nuevo(medios), "Comprobante descuadrado") << "in whole pesos";
    EXPECT_EQ(todo(), antes);
    Comprobante sin_fila = compra("1");
    sin_fila.documento = "006"; // no row to record it in
    EXPECT_EQ(nuevo(sin_fila), "");
}

TEST_P(Grabar, TwoSessionsForOneNumberOneLockAndOneAttachmentSet) {
    const auto otra = abrir_sesion(conexion);
    Comprobante a = compra(), b = compra();
    a.comprobante_adjunto = b.comprobante_adjunto = val_entero(numero_adjunto(*db, b.clave()));
    a.adjuntos = {"a.pdf"}, b.adjuntos = {"b.pdf"};
    const OpcionesGrabar o{.nuevo = true, .hoy = HOY};
    ASSERT_EQ(GrabarComprobante(*otra, a, o).desenlace.mensaje(), "");
    EXPECT_EQ(nuevo(b), "Problemas al grabar cabecera") << "the number is taken";
    b.num_docum = "2";
    std::string movido;
    OpcionesGrabar mover = o;
    mover.copiar_adjuntos = [&](std::int64_t de, std::int64_t a_donde) {
        movido += std::to_string(de) + ">" + std::to_string(a_donde) + " ";
        return a_donde != 2; // a folder that an abandoned voucher left behind
    };
    const auto r = GrabarComprobante(*db, b, mover);
    EXPECT_EQ(r.desenlace.mensaje(), "");
    EXPECT_EQ(r.comprobante_adjunto, 3);
    EXPECT_EQ(movido, "1>2 1>3 ");
    EXPECT_EQ(leer_adjuntos(*db, "1"), a.adjuntos);
    EXPECT_EQ(leer_adjuntos(*db, "3"), b.adjuntos);

    bloquear(*otra, a.clave(), 2);
    const std::string antes = todo();
    a.concepto = "de otro";
    EXPECT_EQ(grabar(a, {}), SOLO_LECTURA);
    EXPECT_EQ(anular(a), SOLO_LECTURA);
    EXPECT_EQ(eliminar(a), SOLO_LECTURA);
    EXPECT_EQ(todo(), antes);
    desbloquear(*otra, 1, 2);
    EXPECT_EQ(rows("select bloqueo_usuario from ctcquorvel order by num_docum").substr(0, 1), "0");
    EXPECT_EQ(grabar(a, {}), "");
}

// Goal: nobody's change is written over or removed unseen. Method: a colleague's statement between opening
// and each of the three changes; what is no change of the voucher stops none of them.
TEST_P(Grabar, WhatAColleagueChangedIsNeverWrittenOver) {
    Comprobante c = compra();
    c.comprobante_adjunto = 4, c.adjuntos = {"a.pdf"}, c.cotizacion = Decimal::leer("950,123456"),
    c.num_ref = " 9 ";
    c.tasa_impuesto_otro = "1.031,50", c.monto_exento = Decimal::leer("-0,4");
    const auto r = GrabarComprobante(*db, c, {.nuevo = true, .hoy = HOY});
    ASSERT_EQ(r.desenlace.mensaje(), "");
    ASSERT_EQ(r.huella, huella(c)) << "what was written is what is stored";
    for (const char* cambio :
         {"update ctcquorvel set usuario=2", "update ctcquorvel set ifrs='1'",
          "update ctdquorvel set centro='501001' where secuencia=1",
          "update ctdquorvel set glosa='otra' where secuencia=3",
          "insert into ctdcomprad(comprobante_adjunto,correlativo,nombre) values (4,9,'b.pdf')",
          "update ctcquorvel set estado='X'", "delete from ctcquorvel"}) {
        SCOPED_TRACE(cambio);
        const std::string abierto = huella(c);
        ejecutar(*db, cambio);
        const std::string antes = todo();
        const OpcionesGrabar o{.hoy = HOY, .huella = abierto};
        for (const std::string& dicho : {GrabarComprobante(*db, c, o).desenlace.mensaje(),
                                         AnularComprobante(*db, c, HOY, abierto).mensaje(),
                                         EliminarComprobante(*db, c.clave(), 1, abierto).desenlace.mensaje()})
            EXPECT_TRUE(dicho.starts_with("Este comprobante ya no es el que abrió: ")) << dicho;
        EXPECT_EQ(todo(), antes);
    }
    EXPECT_EQ(rows("select count(*) as n from ctcquorvel"), "0") << "nor made anew";
    EXPECT_EQ(nuevo(c), "");
    const std::string abierto = huella(c);
    ejecutar(*db, "update ctcquorvel set bloqueo_usuario=0, cheque='8', banco='BCI', cruzado=1");
    EXPECT_EQ(huella(c), abierto) << "a lock and a cheque are no change";
    ejecutar(*db, "update ctcquorvel set usuario=2, bloqueo_usuario=1");
    const std::string dicho = AnularComprobante(*db, c, HOY, abierto).mensaje();
    EXPECT_TRUE(dicho.find("lo grabó 2 LUIS O'HIGGINS, 15/06/2024.") != std::string::npos) << dicho;
}

TEST_P(Grabar, WhatAColleagueSavesWhileAVoucherIsBeingOpenedIsRead) {
    Comprobante c = compra(), ajeno = c;
    ASSERT_EQ(nuevo(c), "");
    ajeno.concepto = "de otro", ajeno.usuario = 2;
    SesionVigilada vigilada(abrir_sesion(conexion));
    vigilada.antes = [&](const std::string& sql) {
        if (sql.starts_with("update ctcquorvel set bloqueo_usuario= 1")) {
            ASSERT_EQ(grabar(ajeno, {}), "");
        }
    };
    const auto leido = leer_con_bloqueo(vigilada, c.clave(), 1);
    ASSERT_TRUE(leido);
    EXPECT_EQ(leido->c.concepto, "de otro");
    EXPECT_FALSE(bloqueado_por_otro(leido->c.bloqueo_usuario, 1));
    bloquear(*db, c.clave(), 2);
    EXPECT_TRUE(bloqueado_por_otro(leer_con_bloqueo(vigilada, c.clave(), 1)->c.bloqueo_usuario, 1))
        << "his lock stays";
}

// Goal: two saves at one moment never share a set, with files or without. Method: the second voucher is
// saved while the first one's save copies its files.
TEST_P(Grabar, SetsOfSimultaneousSaves) {
    if (GetParam() == Motor::sqlite) return; // one writer at a time
    const auto otra = abrir_sesion(conexion);
    Comprobante primero = compra("1"), con = compra("2"), sin = compra("3");
    primero.comprobante_adjunto = con.comprobante_adjunto = 1;
    sin.comprobante_adjunto = 2;
    con.adjuntos = {"a.pdf"};
    ASSERT_EQ(nuevo(primero), "");
    OpcionesGrabar o{.nuevo = true, .hoy = HOY};
    o.copiar_adjuntos = [&](std::int64_t, std::int64_t a_donde) {
        EXPECT_EQ(a_donde, 2);
        const auto r = GrabarComprobante(*otra, sin, {.nuevo = true, .hoy = HOY});
        EXPECT_EQ(r.desenlace.mensaje(), "");
        EXPECT_EQ(r.comprobante_adjunto, 3);
        return true;
    };
    EXPECT_EQ(GrabarComprobante(*db, con, o).desenlace.mensaje(), "");
    EXPECT_EQ(rows("select comprobante_adjunto from ctcquorvel order by num_docum"), "1;2;3");
}

TEST_P(Grabar, AnnulledVoucherLeavesTheBalances) {
    saldos();
    ejecutar(*db, "insert into ctmsdcenth(empresa,anio,centro,debe3,haber3) values (1,2024,'1',null,7)");
    Comprobante c = compra();
    c.comprobante_adjunto = 4;
    c.adjuntos = {"a.pdf"};
    ASSERT_EQ(nuevo(c), "");
    ASSERT_EQ(anular(c, fecha(2024, 5, 2)), "");
    EXPECT_EQ(rows("select centro, debe3, haber3 from ctmsdcenth order by centro"),
              "1||7;2|500000|381000;201|500000|381000;201001|500000|381000;5|400000|500000;501|400000|500000;"
              "501002|400000|500000");
    EXPECT_EQ(rows("select debe3, haber3 from ctmsdmayor"), "0|0");
    EXPECT_EQ(rows("select estado, t_debe, f_ult_modificacion from ctcquorvel"), "X|119000|2024-05-02");
    EXPECT_EQ(rows(LINEAS), "");
    EXPECT_EQ(leer_adjuntos(*db, "4").size(), 1U);
    const std::string antes = todo();
    EXPECT_EQ(anular(c), "Comprobante no válido");
    EXPECT_EQ(grabar(c, {}), "Problemas para actualizar cabecera") << "must not come to life again";
    ASSERT_EQ(nuevo(compra("2")), "");
    ejecutar(*db, "update ctcquorvel set estado='T' where num_docum='2'");
    EXPECT_EQ(anular(compra("2")), "Comprobante no válido");
    ejecutar(*db, "update ctcquorvel set estado='P' where num_docum='2'");
    ejecutar(*db, "update ctmcentros set g_cuenta='8' where centro='201001'");
    EXPECT_EQ(anular(compra("2")), "Problemas al buscar grupo de cuenta ");
    EXPECT_EQ(rows("select debe3 from ctmsdcenth where centro='501002'"), "400000");
}

/// Two annulments that share accounts would wait for each other if each took them as its lines stand.
TEST_P(Grabar, AnnulmentTakesTheBalancesInTheirOwnOrder) {
    saldos();
    Comprobante c = compra();
    std::reverse(c.lineas.begin(), c.lineas.end());
    ASSERT_EQ(nuevo(c), "");
    SesionVigilada vigilada(abrir_sesion(conexion));
    std::string orden;
    vigilada.antes = [&](const std::string& sql) {
        if (!sql.starts_with("update  ctmsd")) return;
        for (const char* columna : {" centro='", " auxiliar='"})
            if (const auto desde = sql.find(columna); desde != std::string::npos) {
                const auto valor = desde + std::string_view(columna).size();
                orden += sql.substr(valor, sql.find('\'', valor) - valor) + " ";
            }
        orden += "/ ";
    };
    ASSERT_EQ(AnularComprobante(vigilada, c, HOY, huella(c)).mensaje(), "");
    EXPECT_EQ(orden, "1 / 109 / 109001 / 2 / 201 / 201001 / 201001 000013 / 5 / 501 / 501002 / ");
}

TEST_P(Grabar, CutVoucherKeepsChequeInvoiceAndAttachments) {
    Comprobante c = compra();
    c.comprobante_adjunto = 6;
    c.adjuntos = {"a.pdf"};
    ASSERT_EQ(nuevo(c), "");
    ejecutar(*db, "update ctcquorvel set cheque='77', banco='CHILE', cuenta='1', fecha_cheque=#03/21/2024#, "
                  "beneficiario='D''Alba', nominativo=1");
    ejecutar(*db, "insert into ftcfactura(empresa,factura,f_comp,documento,num_docum) values "
                  "(1,'8',#03/20/2024#,'002','1')");
    ejecutar(*db, "insert into ctdcomprad(comprobante_adjunto,correlativo,nombre) values (0,90,'ajeno')");
    auto cortado = leer_cabecera(*db, 1, *c.f_comp, "002", "1");
    ASSERT_TRUE(cortado && cortado->cheque);
    cortado->lineas = c.lineas;
    cortado->adjuntos = c.adjuntos;
    const Clave antes = cortado->clave();
    ASSERT_EQ(eliminar(c), "");
    EXPECT_EQ(rows("select nombre from ctdcomprad"), "ajeno");
    EXPECT_FALSE(ExisteComprobante(*db, antes));
    cortado->f_comp = fecha(2024, 4, 2);
    cortado->num_docum = "9";
    ASSERT_EQ(grabar(*cortado, {.nuevo = true, .clave_anterior = antes}), "");
    EXPECT_EQ(
        rows("select f_comp, num_docum, cheque, banco, fecha_cheque, beneficiario, nominativo, cruzado, "
             "comprobante_adjunto from ctcquorvel"),
        "2024-04-02|9|77|CHILE|2024-03-21|D'Alba|1|0|6");
    EXPECT_EQ(rows("select f_comp, num_docum from ftcfactura"), "2024-04-02|9");
    EXPECT_EQ(leer_adjuntos(*db, "6"), c.adjuntos);
    Comprobante socio = compra("2");
    ASSERT_EQ(nuevo(socio), "");
    ejecutar(*db, "update ctcquorvel set comprobante_adjunto=6 where num_docum='2'");
    ASSERT_EQ(eliminar(socio), "");
    EXPECT_EQ(leer_adjuntos(*db, "6"), c.adjuntos) << "they are another voucher's too";
    ejecutar(*db, "update ctcquorvel set comprobante_adjunto=0");
    ASSERT_EQ(eliminar(*cortado), "");
    EXPECT_EQ(rows("select count(*) as n from ctdcomprad where comprobante_adjunto=0"), "1");
}

TEST_P(Grabar, SearchListsAndSubsystems) {
    ASSERT_EQ(nuevo(compra()), "");
    Comprobante dos = compra("2");
    dos.usuario = 2, dos.subsistema = "02", dos.doc_libro = "", dos.nombre = "";
    ASSERT_EQ(nuevo(dos), "");
    EXPECT_EQ(nombre_de_rut(*db, dos.rut_persona), compra().nombre) << "the later one has none";
    EXPECT_EQ(filas(*db, consulta_busqueda(1, 2, 1)).find("|002|2|") != std::string::npos, true);
    const auto rs = db->NewRecord(consulta_busqueda(1, 2, 2));
    ASSERT_FALSE(rs->eof());
    EXPECT_EQ(rs->fields("num_docum").Value.text(), "2");
    rs->MoveNext();
    EXPECT_TRUE(rs->eof());
    EXPECT_FALSE(leer_cabecera(*db, 1, *dos.f_comp, "002", "2", "01"));
    const auto leido = leer_cabecera(*db, 1, *dos.f_comp, "002", "2");
    ASSERT_TRUE(leido);
    EXPECT_EQ(leido->subsistema, "02");
    EXPECT_EQ(leido->doc_libro, " ");
    EXPECT_EQ(filas(*db, consulta_lineas(leido->clave())).substr(0, 9), "1|501002|");
}

TEST_P(Grabar, ConfigurationOfTheLatestYear) {
    ejecutar(*db, "insert into ctmconfigu(empresa,anio,aprobado,documento_cierre,factura_cobrar) values "
                  "(1,2025,'','002','103001')");
    const auto k = leer_configuracion(*db, 1, HOY);
    EXPECT_EQ(k.anio, 2025);
    EXPECT_EQ(k.elaborado + "|" + k.aprobado, "Elaborado|");
    EXPECT_EQ(k.documento_cierre, "");
    EXPECT_EQ(k.req_factura_cobrar + k.req_boleta_cobrar, "10");
    EXPECT_EQ(k.inicio(HOY), HOY);
    EXPECT_EQ(req_aux(*db, "no'hay"), "0");
    EXPECT_FALSE(leer_configuracion(*db, 2, HOY).existe);
}

TEST(Plan, LevelLengthsOfAMask) {
    struct Fila {
        const char* mascara;
        std::array<std::size_t, 4> largos;
    };
    for (const Fila& f : {Fila{"9.99.999", {1, 3, 6, 0}}, Fila{"99", {2, 0, 0, 0}}, Fila{"", {0, 0, 0, 0}}})
        for (std::size_t i = 0; i < f.largos.size(); ++i)
            EXPECT_EQ(largos_de_niveles(f.mascara)[i], f.largos[i]) << f.mascara;
    EXPECT_EQ(largos_de_niveles("9.9.9.9.9.9.9.9.9.9.9.9.9.9")[10], 11U);
}

} // namespace
