// Goal: what comes again is not typed again: a voucher of last month, a line, a gloss. Method: a person's
// keys, and rows as the screen shows and the database keeps them.
#include "apoyo/pantalla.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::pruebas;
using Textos = std::vector<std::string>;

TEST(Repetidos, AVoucherIsDatedAMonthLater) {
    Pantalla p;
    p.abrir();
    p.tecla("ctrl+m");
    EXPECT_EQ(p.mensajes(), Textos{"Abra primero el comprobante que quiere repetir (F3)"});
    p.comprobante("1000");
    p.escribir("txtconcepto", "Arriendo junio 2024");
    p.f.grdDetalle.SetTextMatrix(0, 5, "ARRIENDO JUNIO");
    p.f.grdDetalle.SetTextMatrix(0, 7, "S");
    p.guardar();
    (void)p.mensajes();
    p.tecla("ctrl+m");
    EXPECT_TRUE(p.f.glbBanderaNuevo && p.f.mskF_comp.Enabled());
    EXPECT_EQ(p.f.mskF_comp.Text() + "|" + p.f.txtNum_doc.Text() + "|" + p.f.txtconcepto.Text(),
              "15/07/2024|2|Arriendo julio 2024");
    EXPECT_EQ(p.fila(0), "101001||1.000||ARRIENDO JULIO");
    EXPECT_EQ(p.f.grdDetalle.TextMatrix(0, 7), "") << "what is reconciled is last month's";
    EXPECT_EQ(p.totales(), "1.000|1.000");
    p.guardar();
    EXPECT_EQ(p.sql("select num_docum,f_comp,concepto,t_debe,t_haber from ctcquorvel order by num_docum"),
              "1|2024-06-15|Arriendo junio 2024|1000|1000;2|2024-07-15|Arriendo julio 2024|1000|1000");
}

TEST(Repetidos, ALineAndAGloss) {
    Pantalla p;
    p.abrir();
    p.comprobante("1000");
    ui::ctlPlanilla& g = p.f.grdDetalle;
    g.SetFocus();
    g.move_to(0, 1);
    p.tecla("ctrl+shift+d");
    EXPECT_EQ(g.NewRowPending(), 1);
    EXPECT_EQ(std::to_string(g.Row()) + "," + std::to_string(g.Col()), "2,3");
    EXPECT_EQ(p.totales(), "2.000|1.000");
    p.tecla("escape");
    EXPECT_EQ(p.totales(), "1.000|1.000") << "given up";
    g.move_to(1, 1);
    p.tecla("ctrl+shift+d");
    teclear(p.f, "250");
    for (const char* tecla : {"enter", "enter"}) p.tecla(tecla);
    EXPECT_EQ(p.fila(2), "301001|||250|Aporte de capital");
    EXPECT_EQ(g.TextMatrix(2, 0), "3");
    EXPECT_EQ(p.totales(), "1.000|1.250");

    g.move_to(1, 5);
    g.SetValue(5, "OTRA");
    p.tecla("ctrl+g");
    EXPECT_EQ(p.fila(0) + p.fila(2), "101001||1.000||OTRA301001|||250|OTRA");
    p.tecla("ctrl+z");
    EXPECT_EQ(p.fila(0), "101001||1.000||Aporte de capital") << "one step";
    g.SetTextMatrix(1, 5, "");
    p.tecla("ctrl+g");
    EXPECT_EQ(p.fila(1), "301001|||1.000|Aporte de capital") << "an empty one takes the voucher's";
    g.SetLocked(true);
    g.SetTextMatrix(0, 5, "X");
    g.move_to(0, 1);
    p.tecla("ctrl+g");
    p.tecla("ctrl+shift+d");
    EXPECT_EQ(p.fila(1), "301001|||1.000|Aporte de capital");
    EXPECT_EQ(g.Rows(), 3);
}
