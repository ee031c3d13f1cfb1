// Goal: an office keeps its master tables in windows, also from within a lookup, and copies its database
// there. Method: the windows on the offscreen platform, worked by keys; what is stored is read behind them.
#include "apoyo/comprobante.h"
#include "apoyo/empresa.h"
#include "app/anfitrion.h"
#include "app/catalogos/VentanaCatalogo.h"
#include "app/respaldo/respaldos.h"
#include "app/teclado.h"
#include "demo/demo.h"
#include "qt/FormWindow.h"
#include "qt/ProgressBox.h"
#include "qt/text.h"
#include "screen/consultas/consultas.h"
#include "screen/frmQuorvel.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <fstream>

using namespace quorvel;
using namespace quorvel::app;
using namespace quorvel::apoyo;
namespace fs = std::filesystem;

namespace {

struct Casa {
    const fs::path carpeta = carpeta_nueva();
    const std::string conexion = "sqlite:" + (carpeta / "demo.db").string();
    const RelojFijo reloj{fecha(2024, 3, 31)};
    std::unique_ptr<clsConexion> db;
    Casa() {
        demo::crear_demo(conexion, reloj.hoy());
        db = abrir_sesion(conexion);
    }
};

QString celda(const QWidget& v, int fila, int columna) {
    return v.findChild<QTableView*>("lista")->model()->index(fila, columna).data().toString();
}
int filas_de(const QWidget& v) { return v.findChild<QTableView*>("lista")->model()->rowCount(); }
std::string estado(const QWidget& v) { return qt::to_std(v.findChild<QLabel*>("estado")->text()); }
QLineEdit* caja(const QWidget& v, const char* nombre) {
    for (auto* c : v.findChildren<QLineEdit*>())
        if (c->accessibleName() == QString::fromUtf8(nombre)) return c;
    return nullptr;
}
void foto(QWidget& w, const char* nombre) {
    const QString carpeta = qEnvironmentVariable("QUORVEL_FOTOS");
    if (carpeta.isEmpty()) return;
    QCoreApplication::processEvents();
    w.grab().save(carpeta + "/" + nombre + ".png");
}
void mostrar(QWidget& v) {
    v.show();
    v.activateWindow();
    QCoreApplication::processEvents();
}
void tecla(QWidget& v, Qt::Key k) {
    QCoreApplication::processEvents(); // after a box the window gets the keys back a moment later
    QTest::keyClick(&v, k);
}

TEST(VentanaCatalogoTest, ARowIsFoundChangedMadeAndRemovedByKeys) {
    Casa casa;
    VentanaCatalogo v(casa.conexion, catalogo("auxiliares"), true);
    mostrar(v);
    Teclado t;
    t.escribir("tonel licores");
    ASSERT_EQ(filas_de(v), 1) << "any word, in any order";
    const std::string codigo = qt::to_std(celda(v, 0, 0));
    t.tecla(Qt::Key_Return); // to the list
    t.tecla(Qt::Key_Return); // to the row's name
    EXPECT_EQ(v.focusWidget(), caja(v, "Nombre"));
    EXPECT_FALSE(caja(v, "Código")->isEnabled()) << "vouchers know it by its code";
    t.escribir("EL TONEL SPA");
    foto(v, "catalogo");
    EXPECT_FALSE(v.findChild<QTableView*>("lista")->isEnabled()) << "what is being changed is finished first";
    tecla(v, Qt::Key_Escape);
    EXPECT_TRUE(v.isVisible());
    EXPECT_NE(caja(v, "Nombre")->text(), "EL TONEL SPA");
    caja(v, "Nombre")->setText("EL TONEL SPA");
    tecla(v, Qt::Key_F5);
    EXPECT_EQ(estado(v), "✔ Grabado: " + codigo + " EL TONEL SPA");
    EXPECT_EQ(filas(*casa.db, "select n_auxiliar from ctxaux_cod where auxiliar='" + codigo + "'"),
              "EL TONEL SPA");

    tecla(v, Qt::Key_F2);
    EXPECT_EQ(caja(v, "Código")->text().size(), 6) << "the next one is proposed";
    caja(v, "Nombre")->setText("PANADERIA SOL");
    caja(v, "RUT")->setText("76854320-1");
    tecla(v, Qt::Key_F5);
    EXPECT_EQ(estado(v), "✖ Hay datos que corregir.");
    foto(v, "catalogo_error");
    caja(v, "RUT")->setText("76854320-8");
    for (auto* lista : v.findChildren<QComboBox*>())
        if (lista->accessibleName() == "Tipo" && lista->objectName().isEmpty())
            lista->setCurrentIndex(lista->findData("CL"));
    tecla(v, Qt::Key_F5);
    const std::string nuevo = qt::to_std(caja(v, "Código")->text());
    EXPECT_EQ(filas(*casa.db, "select n_auxiliar,rut,tipo from ctxaux_cod where auxiliar='" + nuevo + "'"),
              "PANADERIA SOL|76.854.320-8|CL");
    QTimer::singleShot(50, [] { Teclado().tecla(Qt::Key_Return); });
    tecla(v, Qt::Key_F8);
    EXPECT_EQ(filas(*casa.db, "select count(*) from ctxaux_cod where auxiliar='" + nuevo + "'"), "1")
        << "no is proposed";
    QTimer::singleShot(50, [] { Teclado().tecla(Qt::Key_Left), Teclado().tecla(Qt::Key_Return); });
    tecla(v, Qt::Key_F8);
    EXPECT_EQ(filas(*casa.db, "select count(*) from ctxaux_cod where auxiliar='" + nuevo + "'"), "0")
        << estado(v);
    EXPECT_TRUE(v.cambiado());
    v.close();
    EXPECT_FALSE(v.isVisible());
}

TEST(VentanaCatalogoTest, WhatAnotherUserChangedIsShownAndWhoMayNotOnlyLooks) {
    Casa casa;
    VentanaCatalogo v(casa.conexion, catalogo("documentos"), true);
    mostrar(v);
    v.findChild<QTableView*>("lista")->selectRow(1);
    ejecutar(*casa.db, "update admdocumen set n_documento='DE OTRO' where documento='002'");
    caja(v, "Nombre")->setText("MIO");
    tecla(v, Qt::Key_F5);
    EXPECT_EQ(estado(v),
              "✖ Otro usuario cambió el tipo de documento 002 mientras tanto. Esc lo muestra como está.");
    tecla(v, Qt::Key_Escape);
    EXPECT_EQ(caja(v, "Nombre")->text(), "DE OTRO");
    EXPECT_EQ(celda(v, 1, 1), "DE OTRO");
    EXPECT_FALSE(v.cambiado());

    VentanaCatalogo mira(casa.conexion, catalogo("usuarios"), false);
    mostrar(mira);
    EXPECT_NE(estado(mira).find("todos los permisos"), std::string::npos);
    for (const char* boton : {"nueva", "grabar", "borrar"})
        EXPECT_FALSE(mira.findChild<QPushButton*>(boton)->isEnabled()) << boton;
    EXPECT_FALSE(caja(mira, "Nombre")->isEnabled());
    tecla(mira, Qt::Key_F2);
    EXPECT_FALSE(caja(mira, "Código")->isEnabled());
}

/// Waits for a window of a kind to have the keys, then acts once.
template <class Ventana> void al_venir(std::function<void(Ventana&)> accion, int veces = 200) {
    QTimer::singleShot(20, [accion, veces] {
        auto* v = dynamic_cast<Ventana*>(QApplication::activeModalWidget());
        if (v != nullptr) return accion(*v);
        ASSERT_GT(veces, 0) << "the window never came";
        al_venir<Ventana>(accion, veces - 1);
    });
}

TEST(VentanaCatalogoTest, WhatALookupLacksIsMadeThereAndComesBackChosen) {
    Casa casa;
    qt::QtEscritorio escritorio;
    qt::QtReportPrinter impresor;
    const Eleccion_inicial eleccion{casa.conexion, casa.carpeta / "print.db", 1, 1};
    SesionApp sesion(eleccion, escritorio, impresor, casa.reloj, casa.carpeta);
    sesion.mostrar();
    Anfitrion anfitrion(sesion, escritorio, eleccion, casa.reloj.hoy());
    al_venir<qt::FormWindow>([&](qt::FormWindow& consulta) {
        EXPECT_EQ(consulta.form().name(), "frmBuscaAuxiliar");
        Teclado().escribir("zapat");
        foto(consulta, "busca_auxiliar");
        al_venir<VentanaCatalogo>([](VentanaCatalogo& v) {
            EXPECT_EQ(caja(v, "Nombre")->text(), "ZAPAT") << "what was searched for";
            caja(v, "Nombre")->setText("ZAPATERIA LUNA");
            foto(v, "agregar_auxiliar");
            QTest::keyClick(&v, Qt::Key_F5);
        });
        Teclado().tecla(Qt::Key_F2);
    });
    const auto elegido = elegir_auxiliar(escritorio, *sesion.pantalla().glbdb);
    ASSERT_TRUE(elegido);
    EXPECT_EQ(elegido->nombre, "ZAPATERIA LUNA");
    EXPECT_EQ(filas(*casa.db, "select auxiliar from ctxaux_cod where n_auxiliar='ZAPATERIA LUNA'"),
              elegido->codigo);
    // who has not every permission is told, and the chart stays
    sesion.pantalla().glbPermiso = "11011";
    al_venir<qt::FormWindow>([&](qt::FormWindow&) {
        al_venir<QDialog>([](QDialog&) { Teclado().tecla(Qt::Key_Escape); });
        Teclado().tecla(Qt::Key_F2);
        Teclado().tecla(Qt::Key_Escape);
    });
    EXPECT_FALSE(elegir_cuenta_contable(escritorio, *sesion.pantalla().glbdb));
    // a kind of document made in the host's menu is offered at once, and the chosen one stays chosen
    frmQuorvel& f = sesion.pantalla();
    f.glbPermiso = "11111";
    f.cmbDocumento.SetListIndex(2);
    const std::string elegida = f.cmbDocumento.Text();
    al_venir<VentanaCatalogo>([](VentanaCatalogo& v) {
        QTest::keyClick(&v, Qt::Key_F2);
        caja(v, "Nombre")->setText("REEMBOLSO");
        QTest::keyClick(&v, Qt::Key_F5);
        v.close();
    });
    for (QAction* a : escritorio.window_of(f)->findChildren<QAction*>())
        if (a->text() == QString::fromUtf8("Tipos de documento…")) a->trigger();
    EXPECT_EQ(f.cmbDocumento.Text(), elegida);
    EXPECT_TRUE(f.cmbDocumento.List(f.cmbDocumento.ListCount() - 1).ends_with(" REEMBOLSO"));
    f.Unload();
}

TEST(RespaldoTest, IsMadeWhilePeopleWorkAndPutBackOnlyWhereNobodyDoes) {
    Casa casa;
    const fs::path copia = casa.carpeta / "copia", adjuntos = casa.carpeta / "base";
    const std::string dicho = hacer_respaldo(casa.conexion, copia, adjuntos, nullptr);
    EXPECT_TRUE(dicho.starts_with("Respaldo hecho: la base de datos y 0 archivos adjuntos en\n")) << dicho;
    EXPECT_TRUE(hacer_respaldo(casa.conexion, copia, adjuntos, nullptr)
                    .starts_with("No se hizo el respaldo: No está vacía"));
    const std::string nueva = "sqlite:" + (casa.carpeta / "nueva.db").string();
    const Restauracion r = poner_respaldo(copia, nueva, adjuntos, false, nullptr);
    EXPECT_TRUE(r.hecha) << r.texto;
    EXPECT_EQ(r.texto, "Base de datos restaurada, con 0 archivos adjuntos.");
    const char* const CUENTA = "select count(*), sum(t_debe) from ctcquorvel";
    EXPECT_EQ(filas(*abrir_sesion(nueva), CUENTA), filas(*casa.db, CUENTA));
    // the database that somebody works in says so and stays
    ejecutar(*casa.db, "update admempresa set n_empresa='DESPUES DEL RESPALDO'");
    const Restauracion ocupada = poner_respaldo(copia, casa.conexion, adjuntos, true, nullptr);
    EXPECT_FALSE(ocupada.hecha);
    EXPECT_NE(ocupada.texto.find("Otros programas tienen abierta la base de datos"), std::string::npos)
        << ocupada.texto;
    EXPECT_EQ(filas(*casa.db, "select n_empresa from admempresa"), "DESPUES DEL RESPALDO");
    // one that was touched is not put anywhere
    std::ofstream(copia / "de_mas.txt") << "x";
    const Restauracion tocada =
        poner_respaldo(copia, "sqlite:" + (casa.carpeta / "otra.db").string(), adjuntos, false, nullptr);
    EXPECT_TRUE(tocada.texto.starts_with("El respaldo no está como se hizo; no se restauró nada.\n· "))
        << tocada.texto;
    EXPECT_FALSE(fs::exists(casa.carpeta / "otra.db"));
}

TEST(RespaldoTest, LeavingTheBoxLeavesNothing) {
    Casa casa;
    const fs::path copia = casa.carpeta / "copia";
    for (int i = 0; i < 40; ++i) { // a file each, so that there is time to think
        fs::create_directories(casa.carpeta / "base/adjunto/demo/1");
        std::ofstream(casa.carpeta / "base/adjunto/demo/1" / std::to_string(i)) << std::string(2000000, 'x');
    }
    QTimer reloj; // as soon as there is a box
    QObject::connect(&reloj, &QTimer::timeout, [] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* caja = dynamic_cast<qt::ProgressBox*>(w)) caja->reject();
    });
    reloj.start(0);
    EXPECT_EQ(hacer_respaldo(casa.conexion, copia, casa.carpeta / "base", nullptr),
              "Cancelado: no quedó nada a medias.");
    EXPECT_FALSE(fs::exists(copia));
}

} // namespace
