// Goal: no sequence of keys and clicks brings the program down or makes data that contradict each other.
// Method: keys and clicks at random on whatever window is in front, as the platform delivers them; the
// database is checked afterwards. Not one of the daily tests: ./test --azar
#include "apoyo/sesiones.h"
#include "app/anfitrion.h"
#include "dbtools/revisar.h"
#include "demo/demo.h"
#include "qt/text.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QPointer>
#include <QScopedValueRollback>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <cstdlib>
#include <filesystem>
#include <random>

using namespace quorvel;
namespace fs = std::filesystem;

namespace {

long numero_de(const char* variable, long si_falta) {
    const char* texto = std::getenv(variable);
    return texto != nullptr ? std::atol(texto) : si_falta;
}

class Mano {
public:
    Mano(unsigned semilla, long pasos) : azar_(semilla), faltan_(pasos) { seguir(); }
    [[nodiscard]] bool termino() const { return faltan_ <= 0; }

private:
    int hasta(int n) { return static_cast<int>(azar_() % static_cast<unsigned>(n)); }

    void seguir() {
        // before anything else: a step may open a window, and that waits in a loop of its own
        QTimer::singleShot(1, &vida_, [this] { seguir(); });
        QWidget* const delante = al_frente();
        const int nivel = QThread::currentThread()->loopLevel();
        if (delante == nullptr || nivel <= nivel_) return; // still in the middle of the last step
        const QScopedValueRollback ocupada(nivel_, nivel);
        if (--faltan_ <= 0 && faltan_ % 3 == 0) return cerrar(*delante); // keys leave what does not close
        if (auto* archivos = qobject_cast<QFileDialog*>(delante)) return archivos->reject();
        const QPointer<QWindow> ventana(delante->windowHandle());
        if (!ventana) return;
        if (hasta(4) > 0)
            tecla(ventana);
        else
            clic(ventana, *delante);
    }
    static QWidget* al_frente() {
        if (QWidget* w = QApplication::activePopupWidget()) return w;
        if (QWidget* w = QApplication::activeModalWidget()) return w;
        if (QWidget* w = QApplication::activeWindow()) return w;
        for (QWidget* w : QApplication::topLevelWidgets()) // no window manager gives the focus to another
            if (w->isVisible()) return w->activateWindow(), w;
        return nullptr;
    }
    /// Each window asks what it has to; all is answered with what leaves it.
    static void cerrar(QWidget& w) {
        if (auto* dialogo = qobject_cast<QDialog*>(&w))
            dialogo->reject();
        else
            w.close();
    }
    void tecla(const QPointer<QWindow>& ventana) {
        static constexpr Qt::Key ORDENES[] = {
            Qt::Key_Return, Qt::Key_Enter,  Qt::Key_Tab,   Qt::Key_Backtab,   Qt::Key_Escape,
            Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Left,  Qt::Key_Right,     Qt::Key_Home,
            Qt::Key_End,    Qt::Key_PageUp, Qt::Key_Space, Qt::Key_Backspace, Qt::Key_Delete,
            Qt::Key_F2,     Qt::Key_F4,     Qt::Key_F5,    Qt::Key_F6,        Qt::Key_F7,
            Qt::Key_F8,     Qt::Key_F9,     Qt::Key_F10,   Qt::Key_F12};
        static constexpr char LETRAS[] = "0123456789,.-/akcfsnty";
        const int que = hasta(10);
        Qt::KeyboardModifiers con = Qt::NoModifier;
        Qt::Key tecla = Qt::Key_Return;
        QString texto;
        if (que < 5) {
            tecla = ORDENES[static_cast<std::size_t>(hasta(std::size(ORDENES)))];
            if (hasta(8) == 0) con = hasta(2) == 0 ? Qt::ControlModifier : Qt::ShiftModifier;
        } else {
            const char letra =
                que < 9 ? LETRAS[hasta(sizeof LETRAS - 1)] : static_cast<char>('a' + hasta(26));
            tecla = static_cast<Qt::Key>(QChar(letra).toUpper().unicode());
            if (que < 9)
                texto = QChar(letra);
            else
                con = hasta(3) == 0 ? Qt::AltModifier : Qt::ControlModifier;
        }
        for (const bool baja : {true, false})
            if (ventana) QTest::simulateEvent(ventana, baja, tecla, con, texto, false);
    }
    void clic(const QPointer<QWindow>& ventana, const QWidget& delante) {
        QList<QWidget*> visibles;
        for (QWidget* w : delante.findChildren<QWidget*>())
            if (w->isVisible() && w->window() == &delante && w->width() > 4 && w->height() > 4) visibles << w;
        const QWidget* en =
            visibles.isEmpty() ? &delante : visibles[hasta(static_cast<int>(visibles.size()))];
        const QPoint donde = en->mapTo(&delante, QPoint(hasta(en->width()), hasta(en->height())));
        const auto boton = hasta(12) == 0 ? Qt::RightButton : Qt::LeftButton;
        for (int veces = hasta(8) == 0 ? 2 : 1; veces > 0; --veces) {
            if (ventana) QTest::mousePress(ventana, boton, {}, donde);
            if (ventana) QTest::mouseRelease(ventana, boton, {}, donde);
        }
    }

    std::mt19937 azar_;
    long faltan_;
    int nivel_ = -1; ///< of the event loop whose step is under way
    QObject vida_;
};

} // namespace

TEST(DISABLED_AlAzar, NadaSeCaeYLosDatosConcuerdan) {
    const fs::path carpeta = apoyo::carpeta_nueva();
    ::setenv("XDG_DATA_HOME", carpeta.c_str(), 1);
    ::setenv("PATH", carpeta.c_str(), 1); // no other program is started
    fs::current_path(carpeta);
    const std::string conexion = "sqlite:" + (carpeta / "demo.db").string();
    crear_demo(conexion);
    Mano mano(static_cast<unsigned>(numero_de("QUORVEL_SEMILLA", 1)), numero_de("QUORVEL_PASOS", 1500));
    while (!mano.termino()) ASSERT_NE(trabajar({conexion, carpeta / "print.db", 1, 1}), FinPantalla::error);
    for (const std::string& problema : revisar(conexion)) ADD_FAILURE() << problema;
}
