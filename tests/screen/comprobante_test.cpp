// Goal: the whole life of a voucher on the screen. Method: keys, picks and buttons of a person, then rows.
#include "apoyo/pantalla.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::pruebas;
using apoyo::Motor;
using Textos = std::vector<std::string>;

namespace {
constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";
constexpr const char* CABECERA = "select num_docum,f_comp,t_debe,t_haber,estado,bloqueo_usuario,usuario from "
                                 "ctcquorvel order by documento,num_docum";
constexpr const char* LINEAS =
    "select secuencia,centro,debe_nacional,haber_nacional,glosa from ctdquorvel order by num_docum,secuencia";
} // namespace

class Comprobantes : public ::testing::TestWithParam<Motor> {};
INSTANTIATE_TEST_SUITE_P(Motores, Comprobantes, ::testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& i) { return apoyo::nombre(i.param); });

TEST_P(Comprobantes, TypedSavedFoundEditedAndSavedAgain) {
    Pantalla p(GetParam());
    p.abrir();
    p.comprobante("1000");
    EXPECT_EQ(p.f.txtNum_doc.Text() + "/" + p.f.txtnro_correlativo.Text(), "1/1");
    EXPECT_EQ(p.fila(0), "101001||1.000||Aporte de capital");
    EXPECT_EQ(p.fila(1), "301001|||1.000|Aporte de capital") << "the new line balances the voucher";
    EXPECT_EQ(p.totales(), "1.000|1.000");
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
    EXPECT_EQ(p.sql(CABECERA), "1|2024-06-15|1000|1000|P|1|1");
    EXPECT_EQ(p.sql(LINEAS), "1|101001|1000|0|Aporte de capital;2|301001|0|1000|Aporte de capital");
    EXPECT_EQ(p.f.Caption(), "001 TRASPASO Nro.1 Fecha:15/06/2024 P");
    EXPECT_FALSE(p.f.txtNum_doc.Enabled() || p.f.cmbDocumento.Enabled() || p.f.mskF_comp.Enabled());

    p.nuevo();
    EXPECT_EQ(p.sql(CABECERA), "1|2024-06-15|1000|1000|P|0|1") << "New releases the lock";
    EXPECT_TRUE(p.f.cmbDocumento.has_focus());
    EXPECT_EQ(p.totales() + "|" + std::to_string(p.f.grdDetalle.Rows()), "0|0|0");
    EXPECT_EQ(p.f.txtCotizacion.Text() + "|" + p.f.lblsubsistema.Caption(), "1|01 Contabilidad");
    p.elegir("cmbDocumento", "001 TRASPASO");
    EXPECT_EQ(p.f.txtNum_doc.Text(), "2");
    p.elegir("cmbDocumento", "(Ninguno)");
    EXPECT_EQ(p.f.txtNum_doc.Text(), "");

    p.buscar("1");
    EXPECT_EQ(p.mensajes(), Textos{});
    EXPECT_EQ(p.fila(1), "301001||0|1.000|Aporte de capital");
    EXPECT_EQ(p.f.lblUsuario.Caption() + "|" + p.f.lblEstado.Caption(), "1 ANA ROJAS|P");
    EXPECT_TRUE(p.celda(0, 3, "2500"));
    EXPECT_TRUE(p.celda(1, 4, "2500"));
    EXPECT_EQ(p.totales(), "2.500|2.500");
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
    EXPECT_EQ(p.sql(CABECERA), "1|2024-06-15|2500|2500|P|1|1");
    EXPECT_EQ(p.sql(LINEAS), "1|101001|2500|0|Aporte de capital;2|301001|0|2500|Aporte de capital");
    p.f.Unload();
    EXPECT_EQ(p.sql("select bloqueo_usuario from ctcquorvel"), "0");
}

TEST_P(Comprobantes, ASaveOfThousandsOfLinesCanBeCalledOff) {
    Pantalla p(GetParam());
    p.abrir();
    p.comprobante("1000");
    std::vector<std::string> lineas;
    for (int i = 0; i < 1000; ++i)
        for (const char* linea : {"3\t101001\t\t1\t0\tuna", "4\t301001\t\t0\t1\totra"})
            lineas.emplace_back(linea);
    p.f.grdDetalle.AddItems(lineas);
    p.f.RecalcularTotales();
    p.escritorio.cancelar_avance_en(2000);
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{"Operación cancelada, no se ha cambiado nada"});
    EXPECT_EQ(p.escritorio.mensajes.back().icon, ui::Icon::information);
    EXPECT_EQ(p.sql(CABECERA) + p.sql(LINEAS), "");
    EXPECT_TRUE(p.f.glbBanderaNuevo && p.f.grdDetalle.Rows() == 2002);
    p.escritorio.cancelar_avance_en(1000000);
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
    EXPECT_EQ(p.escritorio.ocupado, 0);
    EXPECT_EQ(p.sql("select count(*),sum(debe_nacional) from ctdquorvel"), "2002|2000");
}

TEST_P(Comprobantes, ALockThatACrashLeftGoesWhenTheUserStartsAgain) {
    Pantalla p(GetParam());
    p.abrir();
    p.comprobante("1000");
    p.guardar();
    Pantalla q(p, 2), otra_vez(p, 1);
    q.abrir();
    q.buscar("1");
    EXPECT_EQ(q.mensajes().size(), 1U) << "read-only while the lock is there";
    EXPECT_EQ(q.sql("select bloqueo_usuario from ctcquorvel"), "1");
    otra_vez.abrir();
    EXPECT_EQ(q.sql("select bloqueo_usuario from ctcquorvel"), "0");
    q.buscar("1");
    EXPECT_EQ(q.mensajes(), Textos{});
    EXPECT_TRUE(q.celda(0, 3, "5"));
}

TEST_P(Comprobantes, WhatTheListsDoNotKnowIsWrittenBackUnchanged) {
    Pantalla p(GetParam());
    p.abrir();
    p.comprobante("1000");
    p.guardar();
    p.nuevo();
    p.comprobante("500", "002 COMPRA");
    p.guardar();
    p.nuevo();
    p.mensajes();
    // The kind left the catalogue; another voucher with the same number and date is of a kind in the list.
    apoyo::ejecutar(*p.db, "delete from adxdoc_sub where documento='002'");
    apoyo::ejecutar(*p.db,
                    "update ctcquorvel set libro='ANTIGUO',doc_libro='VALE',moneda='UF',cotizacion=950.5 "
                    "where documento='002'");
    Pantalla q(p, 2);
    q.abrir();
    q.buscar("1", "002");
    EXPECT_EQ(q.fila(0), "101001||500|0|Aporte de capital");
    q.elegir("cmblibro", "ANTIGUO");
    q.guardar();
    EXPECT_EQ(q.mensajes(), Textos{GRABADO});
    EXPECT_EQ(q.sql("select documento,libro,doc_libro,moneda,cotizacion,t_debe from ctcquorvel where "
                    "documento='002'"),
              "002|ANTIGUO|VALE|UF|950.5|500");
    // A copy of it takes the exact rate along.
    q.pulsar("cmdCopiar");
    q.elegir("cmbDocumento", "001 TRASPASO");
    q.guardar();
    EXPECT_EQ(q.mensajes(), Textos{GRABADO});
    EXPECT_EQ(q.sql("select cotizacion,t_debe from ctcquorvel where documento='001' and num_docum='2'"),
              "950.5|500");
    q.nuevo();
    EXPECT_EQ(q.f.cmbDocumento.ListCount(), 2) << "a borrowed entry goes with its voucher";
    EXPECT_FALSE(q.f.cmblibro.select_text("ANTIGUO"));
    q.buscar("1", "002");
    q.escritorio.responder(ui::Answer::yes);
    q.pulsar("mnuEliminar");
    EXPECT_EQ(q.sql("select documento,num_docum from ctcquorvel order by num_docum"), "001|1;001|2");
    EXPECT_EQ(q.sql("select count(*) from ctdquorvel"), "4");
}
