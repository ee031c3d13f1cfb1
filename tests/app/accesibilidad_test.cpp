// Goal: the host's windows can be worked in by keys alone and by ear. Method: every window is opened; its
// controls are asked their names, its letters are compared, and Tab goes once around it.
#include "../qt/small_screen.h"
#include "apoyo/sesiones.h"
#include "app/StartWindow.h"
#include "app/avisos.h"
#include "app/borradores.h"
#include "app/catalogos/VentanaCatalogo.h"
#include "app/empresa/ConfiguracionWindow.h"
#include "app/empresa/NuevaEmpresa.h"
#include "app/estilo.h"
#include "app/idioma.h"
#include "app/libros/VentanaLibros.h"
#include "app/recientes.h"
#include "app/teclado.h"
#include "demo/demo.h"
#include "qt/file_dialog.h"
#include "qt/report/PreviewWindow.h"
#include "qt/text.h"
#include "screen/borrador.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTabBar>
#include <QTimer>
#include <functional>
#include <set>

using namespace quorvel;
using namespace quorvel::app;
using namespace quorvel::libros;
namespace fs = std::filesystem;

namespace {

std::string nombre(const QWidget* w) {
    return w == nullptr ? "nothing"
                        : w->metaObject()->className() + (" " + w->accessibleName().toStdString());
}

/// Letters after Alt that two controls of the window share.
std::string letras_repetidas(const QWidget& ventana) {
    std::multiset<QString> letras;
    const auto anotar = [&](const QString& texto) {
        if (const QKeySequence s = QKeySequence::mnemonic(texto); !s.isEmpty()) letras.insert(s.toString());
    };
    for (const auto* b : ventana.findChildren<QAbstractButton*>())
        if (b->isVisible()) anotar(b->text());
    for (const auto* l : ventana.findChildren<QLabel*>())
        if (l->isVisible() && l->buddy() != nullptr) anotar(l->text());
    for (const auto* barra : ventana.findChildren<QTabBar*>())
        for (int i = 0; barra->isVisible() && i < barra->count(); ++i) anotar(barra->tabText(i));
    std::string repetidas;
    for (const QString& letra : letras)
        if (letras.count(letra) > 1) repetidas += letra.toStdString() + " ";
    return repetidas;
}

QRect sitio(const QWidget& w) { return {w.mapTo(w.window(), QPoint(0, 0)), w.size()}; }

/// Neither above, unless in a column to the right, nor before on the same line.
bool se_lee_despues(const QRect& a, const QRect& b) {
    if (b.bottom() <= a.top()) return b.left() > a.right();
    return b.top() > a.bottom() || b.right() > a.left();
}

/// Once around the window by Tab.
void dar_la_vuelta(QWidget& ventana) {
    Teclado teclado;
    std::vector<QWidget*> vistos;
    const auto foto = [&](const QRect& donde) {
        QCoreApplication::processEvents();
        return ventana.grab(donde.adjusted(-2, -2, 2, 2)).toImage();
    };
    for (int i = 0; i < 80; ++i) {
        teclado.tecla(Qt::Key_Tab);
        QWidget* ahora = ventana.focusWidget();
        ASSERT_NE(ahora, nullptr);
        if (!vistos.empty() && ahora == vistos.back()) continue; // a date has three stops
        if (!vistos.empty() && ahora == vistos.front()) break;
        vistos.push_back(ahora);
        EXPECT_TRUE(ventana.rect().contains(sitio(*ahora).center())) << nombre(ahora) << " is out of sight";
    }
    ASSERT_GT(vistos.size(), 1U);
    std::rotate(
        vistos.begin(),
        std::ranges::min_element(
            vistos, {}, [](const QWidget* w) { return std::pair(sitio(*w).top(), sitio(*w).left()); }),
        vistos.end());
    for (std::size_t i = 0; i < vistos.size(); ++i) {
        QWidget* otro = vistos[(i + 1) % vistos.size()];
        vistos[i]->setFocus(Qt::TabFocusReason);
        const QRect donde = sitio(*vistos[i]);
        const QImage con_foco = foto(donde);
        otro->setFocus(Qt::TabFocusReason);
        EXPECT_NE(con_foco, foto(sitio(*vistos[i]))) << nombre(vistos[i]) << ": the focus is not seen";
        const bool ultimo = i + 1 == vistos.size();
        EXPECT_TRUE(ultimo || se_lee_despues(donde, sitio(*otro)))
            << nombre(vistos[i]) << " -> " << nombre(otro);
    }
    for (QWidget* w : ventana.findChildren<QWidget*>()) {
        const bool deberia = w->isVisible() && w->isEnabled() && w->focusProxy() == nullptr &&
                             (w->focusPolicy() & Qt::TabFocus) && !pruebas::is_part(w, &ventana);
        EXPECT_TRUE(!deberia || std::ranges::count(vistos, w)) << "Tab does not reach " << nombre(w);
    }
}

void revisar(QWidget& ventana, const char* que) {
    SCOPED_TRACE(que);
    ventana.show();
    ventana.activateWindow();
    QCoreApplication::processEvents();
    EXPECT_EQ(pruebas::nameless(ventana), "");
    EXPECT_EQ(letras_repetidas(ventana), "");
    dar_la_vuelta(ventana);
}

/// For windows that wait: the one that comes is looked at and closed.
void revisar_modal(const char* que, const std::function<void()>& abrir) {
    bool vino = false;
    QTimer::singleShot(50, [&] {
        auto* ventana = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(ventana, nullptr) << que;
        vino = true;
        revisar(*ventana, que);
        ventana->reject();
    });
    abrir();
    EXPECT_TRUE(vino) << que;
}

TEST(AccesibilidadTest, TheHostsWindowsAreWorkedInByKeysAndByEar) {
    const fs::path carpeta = apoyo::carpeta_nueva();
    const std::string conexion = "sqlite:" + (carpeta / "demo.db").string();
    const Fecha hoy = std::chrono::year(2026) / 11 / 25;
    demo::crear_demo(conexion, hoy);
    anotar_reciente(carpeta / "recientes.txt", conexion);
    std::vector<BorradorLibre> borradores(2);
    borradores[0].documento = "002 COMPRA";
    report::Layout hoja;
    hoja.width = 216;
    hoja.height = 279;
    hoja.pages.resize(1);
    auto& aplicacion = *qobject_cast<QApplication*>(QCoreApplication::instance());
    for (const Tema tema : {Tema::oscuro, Tema::claro}) {
        aplicar_estilo(aplicacion, tema);
        StartWindow inicio(carpeta);
        revisar(inicio, "start");
        NuevaEmpresa nueva(conexion, hoy);
        revisar(nueva, "new company");
        ConfiguracionWindow configuracion(conexion, 1, "Comercial Los Aromos Ltda.", hoy);
        revisar(configuracion, "configuration");
        VentanaLibros libros(conexion, 1, "Comercial Los Aromos Ltda.", hoy);
        for (const Libro libro : {Libro::diario, Libro::mayor, Libro::balance, Libro::mensual}) {
            libros.abrir(libro);
            revisar(libros, "books");
        }
        VentanaCatalogo catalogo_cuentas(conexion, catalogo("cuentas"), true);
        revisar(catalogo_cuentas, "chart of accounts");
        libros.hide();
        revisar_modal("drafts", [&] { (void)elegir_borrador(borradores, nullptr); });
        revisar_modal("question", [] { (void)preguntar(nullptr, "¿Borrar el borrador?"); });
        revisar_modal("preview", [&] { qt::show_preview(hoja, "Comprobante"); });
    }
}

TEST(AccesibilidadTest, EveryWindowIsReachedOnASmallScreen) {
    const fs::path carpeta = apoyo::carpeta_nueva();
    const std::string conexion = "sqlite:" + (carpeta / "demo.db").string();
    const Fecha hoy = std::chrono::year(2026) / 11 / 25;
    demo::crear_demo(conexion, hoy);
    anotar_reciente(carpeta / "recientes.txt", conexion);
    StartWindow inicio(carpeta);
    EXPECT_EQ(pruebas::out_of_reach(inicio), "");
    NuevaEmpresa nueva(conexion, hoy);
    EXPECT_EQ(pruebas::out_of_reach(nueva), "");
    ConfiguracionWindow configuracion(conexion, 1, "Comercial Los Aromos Ltda.", hoy);
    EXPECT_EQ(pruebas::out_of_reach(configuracion), "");
    VentanaLibros libros(conexion, 1, "Comercial Los Aromos Ltda.", hoy);
    for (const Libro libro : {Libro::diario, Libro::mayor, Libro::balance, Libro::mensual}) {
        libros.abrir(libro);
        EXPECT_EQ(pruebas::out_of_reach(libros), "") << static_cast<int>(libro);
    }
    for (const Catalogo& c : catalogos()) {
        VentanaCatalogo ventana(conexion, c, true);
        EXPECT_EQ(pruebas::out_of_reach(ventana), "") << c.nombre;
    }
    std::vector<BorradorLibre> borradores(2);
    report::Layout hoja;
    hoja.width = 216;
    hoja.height = 279;
    hoja.pages.resize(1);
    const auto modal = [](const std::function<void()>& abrir) {
        QTimer::singleShot(50, [] {
            auto* ventana = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(ventana, nullptr);
            EXPECT_EQ(pruebas::out_of_reach(*ventana), "") << nombre(ventana);
            ventana->reject();
        });
        abrir();
    };
    modal([&] { (void)elegir_borrador(borradores, nullptr); });
    modal([] { (void)preguntar(nullptr, "¿Borrar el borrador?"); });
    modal([&] { (void)qt::show_preview(hoja, "Comprobante"); });
    modal([&] {
        (void)qt::choose_file(nullptr, {"Abrir", {"Base de datos (*.db)"}, qt::to_qt(carpeta.string())});
    });
}

TEST(AccesibilidadTest, WhatQtLeavesInEnglishIsSaidInSpanish) {
    hablar_castellano(*qobject_cast<QApplication*>(QCoreApplication::instance()));
    const std::pair<const char*, const char*> textos[] = {
        {"QPlatformTheme", "Cancel"},  {"QPlatformTheme", "OK"},
        {"QFileDialog", "Look in:"},   {"QFileDialog", "File &name:"},
        {"QFileDialog", "Directory:"}, {"QFileSystemModel", "Date Modified"},
        {"QPrintDialog", "Print"},     {"QAbstractFileIconProvider", "Folder"},
        {"QDialogButtonBox", "OK"},
    };
    for (const auto& [donde, texto] : textos)
        EXPECT_NE(QCoreApplication::translate(donde, texto), texto) << donde;
}

} // namespace
