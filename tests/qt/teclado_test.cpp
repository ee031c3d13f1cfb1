// Goal: a day's work without a mouse. Method: key events alone into the real window, counted.
#include "pantalla_qt.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QWheelEvent>

namespace quorvel {

namespace {

using pruebas::Pantalla;

class TecladoQt : public ::testing::Test {
protected:
    Pantalla p;
    ui::ctlPlanilla& g = p.f().grdDetalle;
    /// Digits of the numeric pad; '.' is its decimal key, '+' stands for its Enter.
    void pad(const std::string& teclas) {
        for (const char c : teclas) {
            if (c == '+')
                p.teclado.tecla(Qt::Key_Enter, Qt::KeypadModifier);
            else
                p.teclado.tecla(static_cast<Qt::Key>(c), Qt::KeypadModifier, std::string(1, c));
        }
    }
};

} // namespace

TEST_F(TecladoQt, ATenLineVoucherOnTheNumericPad) {
    p.f().mskF_comp.SetFocus();
    const int antes = p.teclado.pulsaciones();
    pad("+001++"); // date, kind, number
    p.teclado.escribir("CO");
    pad("++");
    p.teclado.escribir("Gastos de junio");
    pad("+"); // past the document's fields, which a general voucher has no use for
    const int cabecera = p.teclado.pulsaciones() - antes;
    const char* const debe[] = {"501001+35000", "501002+128000", "501001+4500",  "501001+990",
                                "501002+77310", "501001+12000",  "109001+24320", "501002+60000"};
    for (const char* linea : debe)
        pad(std::string(linea) + "++"); // Enter after the amount and after the gloss
    pad("201002++100000++");            // an empty debit leads to the credit
    pad("101001++++");                  // the last line proposes what is missing
    EXPECT_EQ(g.Rows(), 10);
    EXPECT_EQ(p.f().lblTotalDebe.Caption() + " " + p.f().lblTotalhaber.Caption(), "342.120 342.120");
    p.teclado.tecla(Qt::Key_F5);
    EXPECT_EQ(p.mensajes, std::vector<std::string>{"Comprobante Ingresado y Mayorizado"});
    EXPECT_EQ(apoyo::filas(*p.db, "select count(*), sum(debe_nacional), sum(haber_nacional) from ctdquorvel"),
              "10|342120|342120");
    EXPECT_EQ(apoyo::filas(*p.db, "select distinct glosa from ctdquorvel"), "Gastos de junio");
    EXPECT_EQ(cabecera, 26) << "the manual names these figures";
    EXPECT_EQ(p.teclado.pulsaciones() - antes, 163);
}

TEST_F(TecladoQt, TheDecimalKeyOfThePadTypesAComma) {
    p.ir_a("txtCotizacion");
    pad("950.5");
    EXPECT_EQ(p.f().txtCotizacion.Text(), "950,5");
    p.ir_a("grdDetalle");
    pad("101001+1000+");
    g.move_to(0, 10);
    pad("19.5+");
    EXPECT_EQ(g.TextMatrix(0, 10), "19,5");
}

TEST_F(TecladoQt, TheProposedAmountIsSelectedAndTypedOver) {
    p.ir_a("grdDetalle");
    pad("101001+150000++301001");
    p.teclado.tecla(Qt::Key_Enter);
    p.teclado.tecla(Qt::Key_F7);
    EXPECT_FALSE(g.EditActive()) << "the credit fits already";
    g.move_to(1, 4);
    pad("9+");
    p.teclado.tecla(Qt::Key_F7);
    QLineEdit& editor = p.grilla().editor();
    EXPECT_EQ(editor.selectedText(), "150.000");
    pad("15");
    EXPECT_EQ(editor.text(), "15");
    p.teclado.tecla(Qt::Key_Escape);
    p.teclado.tecla(Qt::Key_F7);
    pad("+");
    EXPECT_EQ(p.f().lblTotalhaber.Caption(), "150.000");
}

TEST_F(TecladoQt, AKeyDoesWhatItNames) {
    p.f().optsuma.press();
    p.teclado.tecla(Qt::Key_F11);
    p.f().txtnumero.SetText("");
    pad("1000+500+");
    EXPECT_EQ(p.f().txtresultado1.Text(), "1.500,00");
    auto& cinta = *p.escritorio.window_of(p.f())->findChild<QPlainTextEdit*>("txtresultado2");
    EXPECT_TRUE(cinta.cursorRect().intersects(cinta.viewport()->rect()));
    EXPECT_EQ(cinta.textCursor().block().text(), "=1.500,00") << "the newest line of the tape is in sight";
    p.teclado.tecla(Qt::Key_F12);
    pad("101001+1000++301001+");
    p.f().lstadjunto.AddItem("f.pdf");
    p.f().lstadjunto.SetListIndex(0);
    g.move_to(0, 5);
    g.begin_edit();
    for (const int preguntas : {1, 2}) { // with a cell open, and in a box
        p.teclado.tecla(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(p.mensajes, std::vector<std::string>(preguntas, "Esta seguro que desea eliminar f.pdf"));
        EXPECT_EQ(g.Rows(), 2);
        p.f().lstadjunto.Clear();
        p.f().lstadjunto.AddItem("f.pdf");
        p.f().lstadjunto.SetListIndex(0);
        p.f().txtconcepto.SetFocus();
    }
    ASSERT_TRUE(g.SetFocus() && g.move_to(0, 7));
    p.teclado.escribir("s");
    p.teclado.tecla(Qt::Key_Backspace);
    EXPECT_EQ(g.edit_text(), "S");
    p.teclado.tecla(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(g.Rows(), 1) << "in an open cell as well";
}

TEST_F(TecladoQt, TheContextMenuOffersWhatTheCellCanDo) {
    p.ir_a("grdDetalle");
    const auto abrir = [&] {
        QContextMenuEvent evento(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
        QApplication::sendEvent(p.grilla().viewport(), &evento);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        std::string texto;
        if (menu == nullptr) return texto;
        for (const QAction* a : menu->actions()) texto += a->text().toStdString() + ";";
        menu->close();
        return texto;
    };
    const std::string ordenes = "Proponer la diferencia\tF7;Explicar la diferencia\tF9;Ir al detalle\tF12;"
                                "Duplicar la línea\tCtrl+Mayús+D;Esta glosa en todas las líneas\tCtrl+G;"
                                "Repetir en el mes siguiente\tCtrl+M;";
    EXPECT_EQ(abrir(), "Buscar\tCtrl+Y;" + ordenes);
    g.move_to(0, 3);
    EXPECT_EQ(abrir(), ordenes);
    g.move_to(0, 1);
    g.type(U'1');
    EXPECT_EQ(abrir(), "Buscar\tCtrl+Y;Deshacer\tCtrl+Z;" + ordenes);
}

TEST_F(TecladoQt, NoTwoThingsHaveOneKey) {
    std::map<std::string, std::string> teclas{
        {"f2", "Nuevo"},        {"f3", "Buscar"},       {"f5", "Grabar"},    {"f6", "Imprimir"},
        {"f8", "Borrar línea"}, {"f1", "Ayuda"},        {"ctrl+n", "Nuevo"}, {"ctrl+r", "Recuperar"},
        {"ctrl+y", "Buscar"},   {"ctrl+z", "Deshacer"}, {"ctrl+0", "Tamaño"}};
    const auto anotar = [&](const std::string& tecla, const std::string& que) {
        if (tecla.empty()) return;
        EXPECT_TRUE(ui::parse_key(tecla)) << tecla;
        EXPECT_TRUE(teclas.emplace(tecla, que).second) << tecla << ": " << que << " and " << teclas[tecla];
    };
    for (const ui::Control* control : p.f().controls()) {
        if (const auto* menu = dynamic_cast<const ui::MenuItem*>(control))
            anotar(menu->shortcut(), menu->Caption());
        if (const auto* boton = dynamic_cast<const ui::CommandButton*>(control))
            anotar(boton->shortcut(), boton->name());
        for (const ui::Command& orden : control->commands()) anotar(orden.shortcut, orden.caption);
    }
    EXPECT_GT(teclas.size(), 35U);
}

TEST_F(TecladoQt, TheWheelChangesNoList) {
    p.ir_a("cmblibro");
    auto* lista = p.escritorio.window_of(p.f())->findChild<QWidget*>("cmblibro");
    const int antes = p.f().cmblibro.ListIndex();
    QWheelEvent giro(QPointF(5, 5), lista->mapToGlobal(QPointF(5, 5)), {}, {0, -240}, Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(lista, &giro);
    EXPECT_EQ(p.f().cmblibro.ListIndex(), antes);
}

} // namespace quorvel
