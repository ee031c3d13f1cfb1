// Goal: what only the system's own host offers: names, the bar of a save, the months, the zoom. Method: its
// windows with a demonstration company, worked by keys.
#include "app/libros/VentanaMeses.h"
#include "app/zoom.h"
#include "puesto.h"
#include "qt/FormWindow.h"
#include "qt/SuggestionBox.h"
#include "qt/text.h"
#include "screen/abrir.h"
#include "text/letras_utf8.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QTreeWidget>

using namespace quorvel;
using namespace quorvel::app;
using namespace quorvel::libros;
using namespace quorvel::apoyo;

namespace {

TEST(Propio, AccountsAreNamedInTheGridAndChosenByName) {
    Puesto puesto;
    qt::QtEscritorio escritorio;
    SesionApp sesion = puesto.sesion(escritorio);
    sesion.mostrar();
    ui::ctlPlanilla& g = sesion.pantalla().grdDetalle;
    g.SetFocus();
    Teclado().escribir("caja chi");
    auto& lista = *escritorio.window_of(sesion.pantalla())->findChild<qt::SuggestionBox*>();
    EXPECT_TRUE(lista.isVisible());
    EXPECT_EQ(lista.item(0)->text().left(6), "101002");
    EXPECT_EQ(g.edit_text(), "CAJA CHI");
    Teclado().tecla(Qt::Key_Return);
    EXPECT_FALSE(lista.isVisible());
    EXPECT_EQ(g.TextMatrix(0, 1), "101002") << "scripts and files see the code alone";
    QCoreApplication::processEvents();
    EXPECT_EQ(g.notes.of(1, "101002"), sesion.pantalla().lblCuenta.Caption());
    sesion.pantalla().Unload();
}

TEST(Propio, ASaveIsToldInABarUntilSomethingChanges) {
    Puesto puesto;
    qt::QtEscritorio escritorio;
    SesionApp sesion = puesto.sesion(escritorio);
    sesion.mostrar();
    frmQuorvel& f = sesion.pantalla();
    const auto clave = f.glbdb->NewRecord("select top 1 f_comp, documento, num_docum from ctcquorvel where"
                                          " empresa=1 and estado='P' order by f_comp desc");
    ASSERT_TRUE(abrir_comprobante(
        f, {1, "01", *clave->at(0).date(), recortar(clave->at(1).text()), recortar(clave->at(2).text())}));
    Teclado().tecla(Qt::Key_F5); // a box would wait here
    EXPECT_TRUE(f.ctlRegistro1.Notice().starts_with("Grabado: ")) << f.ctlRegistro1.Notice();
    EXPECT_TRUE(f.ctlRegistro1.NoticeDone());
    f.txtconcepto.SetFocus();
    Teclado().escribir("x");
    EXPECT_EQ(f.ctlRegistro1.Notice(), "");
    f.Unload();
}

TEST(Propio, TheMonthsSayWhatIsLeftToDo) {
    Puesto puesto;
    const auto db = abrir_sesion(puesto.conexion);
    (void)db->executesql(
        "update ctdquorvel set debe_nacional=debe_nacional+7 where empresa=1 and secuencia=1 and"
        " f_comp=(select max(f_comp) from ctcquorvel where empresa=1 and estado='P')");
    Posicion abierta;
    VentanaMeses ventana(puesto.conexion, 1, "Empresa", puesto.reloj.hoy(),
                         {[&](const Posicion& p) { abierta = p; },
                          [] { return std::vector<BorradorLibre>(); }, [](const fs::path&) {}});
    ventana.show();
    auto& lista = *ventana.findChild<QTreeWidget*>();
    EXPECT_EQ(lista.topLevelItemCount(), 3) << "until March";
    QTreeWidgetItem* fila = lista.topLevelItem(2)->child(0);
    ASSERT_NE(fila, nullptr);
    EXPECT_EQ(fila->text(0) + fila->text(3), "Descuadradofalta Haber 7");
    lista.setCurrentItem(fila);
    ventana.activateWindow();
    Teclado().tecla(Qt::Key_Return);
    EXPECT_EQ(abierta.documento + abierta.num_docum, qt::to_std(fila->text(2).remove(" Nro. ")));
}

TEST(Propio, LettersGrowAndAreRemembered) {
    const fs::path carpeta = carpeta_nueva();
    const double antes = QApplication::font().pointSizeF();
    {
        Zoom zoom(carpeta);
        QLineEdit caja;
        caja.show();
        caja.activateWindow();
        for (int i = 0; i < 3; ++i) Teclado().tecla(Qt::Key_Plus, Qt::ControlModifier);
        EXPECT_NEAR(caja.font().pointSizeF(), antes * 1.3, 0.01);
        EXPECT_EQ(caja.text(), "");
        Teclado().tecla(Qt::Key_Minus, Qt::ControlModifier);
    }
    QFont usual = QApplication::font();
    usual.setPointSizeF(antes);
    QApplication::setFont(usual);
    Zoom otra(carpeta);
    EXPECT_EQ(otra.porcentaje(), 120);
    QLineEdit caja;
    caja.show();
    caja.activateWindow();
    Teclado().tecla(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(QApplication::font().pointSizeF(), antes);
}

} // namespace
