// Goal: the detail grid's cell rules, totals and name labels. Method: cells typed through the key rules.
#include "apoyo/pantalla.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::pruebas;
using Textos = std::vector<std::string>;

namespace {
class Detalle : public ::testing::Test {
protected:
    Pantalla p;
    ui::ctlPlanilla& g = p.f.grdDetalle;
    void SetUp() override {
        p.abrir();
        p.f.txtconcepto.SetText(std::string(30, 'N') + "ÑANDÚ" + std::string(30, 'Z'));
    }
};
} // namespace

TEST_F(Detalle, CellsThatAreRefused) {
    ASSERT_TRUE(p.celda(0, 1, "101001"));
    ASSERT_TRUE(p.celda(0, 3, "10"));
    ASSERT_TRUE(g.move_to(1, 1));
    ASSERT_TRUE(p.celda(1, 1, "103001"));
    struct Caso {
        int fila, columna;
        const char *texto, *mensaje;
        int queda; ///< current column afterwards
    } const casos[] = {
        {0, 1, "999999", "Cuenta no válida", 1},
        {0, 1, "1010", "Cuenta no válida", 1},
        {0, 1, "501009", "Cuenta no válida", 1},
        {0, 2, "12", "Cuenta no requiere auxiliar", 3},
        {0, 6, "999", "Centro no válida", 6},
        {0, 6, "201002", "Centro no válida", 6},
        {0, 9, "999", "Codigo de impuesto no válido", 9},
        {1, 3, "5", "Cuenta requiere auxiliar", 2},
        {1, 2, "777", "Auxiliar no válida", 2},
        {1, 2, "99", "Auxiliar no válida", 2},
    };
    for (const Caso& c : casos) {
        EXPECT_FALSE(p.celda(c.fila, c.columna, c.texto)) << c.texto;
        EXPECT_EQ(p.mensajes(), Textos{c.mensaje}) << c.columna << " " << c.texto;
        EXPECT_EQ(g.Col(), c.queda) << c.texto;
        g.cancel_edit();
    }
    EXPECT_FALSE(p.celda(0, 5, std::string(61, 'x')));
    EXPECT_EQ(p.mensajes(), Textos{"Longitud máxima del campo 60"});
    g.cancel_edit();
    EXPECT_TRUE(p.celda(0, 5, std::string(60, 'x')));
    EXPECT_EQ(g.TextMatrix(0, 5), std::string(60, 'X'));
    EXPECT_TRUE(g.move_to(2, 1) || g.move_to(1, 1));
    for (int col = 2; col <= 5; ++col) {
        EXPECT_FALSE(p.celda(2, col, "1")) << "no account yet, column " << col;
        EXPECT_EQ(g.hint(), "Escriba primero la cuenta de la línea");
    }
    EXPECT_EQ(p.mensajes(), Textos{});
    g.paste("1.500\t\t");
    EXPECT_EQ(g.NewRowPending(), 0);
    p.nuevo();
    p.tecla("f12");
    p.tecla("1");
    EXPECT_EQ(std::to_string(g.Col()) + g.edit_text(), "11") << "a new voucher begins at the account";
}

TEST_F(Detalle, AccountAuxiliaryAndGloss) {
    ASSERT_TRUE(p.celda(0, 1, "103001"));
    EXPECT_EQ(g.Col(), 2) << "the account asks for an auxiliary";
    EXPECT_EQ(g.TextMatrix(0, 3) + g.TextMatrix(0, 4), "") << "equal totals leave nothing to balance";
    EXPECT_EQ(p.f.lblCuenta.Caption(), "CLIENTES");
    EXPECT_EQ(g.TextMatrix(0, 5), std::string(30, 'N') + "ÑANDÚ" + std::string(25, 'Z')) << "60 letters";
    ASSERT_TRUE(p.celda(0, 2, "12"));
    EXPECT_EQ(g.TextMatrix(0, 2) + "|" + p.f.lblAuxiliar.Caption(), "000012|JUAN PEREZ SOTO");
    ASSERT_TRUE(p.celda(0, 3, "700"));
    ASSERT_TRUE(p.celda(0, 5, "a mano"));
    ASSERT_TRUE(p.celda(0, 1, "103001")); // the same account again keeps auxiliary and gloss
    EXPECT_EQ(p.fila(0), "103001|000012|700||A MANO");
    ASSERT_TRUE(g.move_to(1, 1));
    ASSERT_TRUE(p.celda(1, 1, "103001"));
    EXPECT_EQ(p.f.lblAuxiliar.Caption(), "");
    ASSERT_TRUE(p.celda(1, 2, "000013"));
    g.move_to(0, 4);
    EXPECT_EQ(p.f.lblAuxiliar.Caption(), "JUAN PEREZ SOTO") << "neighbours with one account";
    ASSERT_TRUE(p.celda(0, 6, "101001"));
    ASSERT_TRUE(p.celda(0, 9, "024"));
    EXPECT_EQ(p.f.lblCentro.Caption() + "|" + p.f.lblOtro_impuesto.Caption() + "|" + g.TextMatrix(0, 10),
              "GERENCIA|LICORES|31,50");
    g.move_to(0, 3);
    EXPECT_EQ(p.f.txtnumero.Text(), "700");
    ASSERT_TRUE(g.move_to(2, 1)); // an empty row names nothing
    EXPECT_EQ(p.f.lblCuenta.Caption() + p.f.lblAuxiliar.Caption() + p.f.lblCentro.Caption() +
                  p.f.lblOtro_impuesto.Caption(),
              "");
}

TEST_F(Detalle, TotalsFollowTheRows) {
    ASSERT_TRUE(p.celda(0, 1, "101001") && p.celda(0, 3, "1000"));
    ASSERT_TRUE(g.move_to(1, 1));
    ASSERT_TRUE(p.celda(1, 1, "301001") && p.celda(1, 4, "400"));
    EXPECT_EQ(p.totales(), "1.000|400");
    ASSERT_TRUE(g.move_to(2, 1));
    ASSERT_TRUE(p.celda(2, 1, "401001"));
    EXPECT_EQ(g.TextMatrix(2, 4), "600");
    EXPECT_EQ(p.totales(), "1.000|1.000");
    p.tecla("escape"); // the row that balanced the voucher is given up
    p.tecla("escape");
    EXPECT_EQ(p.totales(), "1.000|400");

    ASSERT_TRUE(p.celda(0, 4, "250")); // a line holds one side only
    EXPECT_EQ(p.fila(0).substr(0, 12), "101001|||250");
    EXPECT_EQ(p.totales(), "0|650");
    g.move_to(0, 4);
    g.begin_edit();
    g.commit_edit(); // walked over without a change
    EXPECT_EQ(p.totales(), "0|650");
    g.move_to(0, 1);
    p.f.ctlRegistro1.SetDeleteLineEnabled(false);
    p.tecla("ctrl+delete");
    EXPECT_EQ(std::to_string(g.Rows()) + g.hint(), "2No tiene permiso para borrar líneas: pídalo a quien "
                                                   "administra los usuarios");
    p.f.ctlRegistro1.SetDeleteLineEnabled(true);
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::DeleteLine);
    EXPECT_EQ(g.Rows(), 1);
    EXPECT_EQ(p.totales(), "0|400");
    EXPECT_EQ(g.TextMatrix(0, 0), "2") << "the numbers of the other rows stay";
    p.tecla("ctrl+z");
    EXPECT_EQ(p.fila(0).substr(0, 12) + p.totales(), "101001|||2500|650");
}

TEST_F(Detalle, Calculator) {
    struct Paso {
        const char *opcion, *numero, *resultado;
    } const pasos[] = {{"optsuma", "1299,5", "1.299,50"},
                       {"optresta", "299,5", "1.000,00"},
                       {"optporcentaje", "19", "190,00"}};
    for (const Paso& paso : pasos) {
        p.pulsar(paso.opcion);
        p.f.txtnumero.SetFocus();
        p.f.txtnumero.SelectAll();
        teclear(p.f, paso.numero);
        p.tecla("enter");
        EXPECT_EQ(p.f.txtresultado1.Text(), paso.resultado);
    }
    EXPECT_EQ(p.f.txtresultado2.Text(),
              "+1299,5\r\n=1.299,50\r\n1.299,50-299,5\r\n=1.000,00\r\n1.000,00%19\r\n="
              "190,00\r\n");
    EXPECT_TRUE(p.f.txtnumero.all_selected());
    p.pulsar("cmdlimpiar");
    EXPECT_EQ(p.f.txtresultado1.Text() + p.f.txtresultado2.Text(), "");
    // 1299,5 x 19 % is 246,905: shown as a person rounds it
    p.f.txtresultado1.SetText("1.299,5");
    p.f.txtnumero.SetText("19");
    p.pulsar("cmdigual");
    EXPECT_EQ(p.f.txtresultado1.Text(), "246,91");
}

TEST_F(Detalle, TheDifferenceIsProposedAndExplained) {
    ASSERT_TRUE(p.celda(0, 1, "501001") && p.celda(0, 3, "100000"));
    ASSERT_TRUE(g.move_to(1, 1) && p.celda(1, 1, "109001") && p.celda(1, 4, "0"));
    ASSERT_TRUE(p.celda(1, 3, "19000"));
    ASSERT_TRUE(g.move_to(2, 1) && p.celda(2, 1, "101002") && p.celda(2, 4, "1190"));
    // The last line lacks two digits; its proposal replaces what it has.
    p.tecla("f7");
    EXPECT_EQ(g.Col(), 4);
    EXPECT_EQ(g.edit_text(), "119.000");
    EXPECT_EQ(g.TextMatrix(2, 4), "1.190") << "not before it is accepted";
    p.tecla("escape");
    EXPECT_EQ(p.totales(), "119.000|1.190");
    p.tecla("f7");
    p.tecla("enter");
    EXPECT_EQ(p.totales(), "119.000|119.000");
    p.tecla("f7");
    EXPECT_FALSE(g.EditActive()) << "nothing is missing";
    p.tecla("f9");
    EXPECT_EQ(p.mensajes(), Textos{"El comprobante está cuadrado"});
    // Digits swapped in the second line, while the third is still the row being added.
    ASSERT_TRUE(g.move_to(1, 3) && p.celda(1, 3, "91000"));
    g.move_to(0, 1);
    p.tecla("f9");
    EXPECT_EQ(p.mensajes(),
              Textos{"Diferencia 72.000, falta en el Haber\n\nLínea 2, Debe 91.000: dos cifras "
                     "cambiadas: cuadra con 19.000\nLínea 3, Haber 119.000: dos cifras cambiadas: cuadra con "
                     "191.000"});
    EXPECT_EQ(g.Row() * 10 + g.Col(), 13);
    // A cell that refuses keeps the keys; a locked grid proposes nothing.
    g.move_to(0, 1);
    p.tecla("9");
    p.tecla("f9");
    EXPECT_EQ(p.mensajes(), Textos{"Cuenta no válida"});
    EXPECT_TRUE(g.EditActive());
    g.cancel_edit();
    g.SetLocked(true);
    p.tecla("f7");
    EXPECT_FALSE(g.EditActive());
}
