#include "app/mano.h"

#include "qt/text.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QScopedValueRollback>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWindow>

namespace quorvel::pruebas {
namespace {

QWidget* al_frente() {
    if (QWidget* w = QApplication::activePopupWidget()) return w;
    if (QWidget* w = QApplication::activeModalWidget()) return w;
    if (QWidget* w = QApplication::activeWindow()) return w;
    for (QWidget* w : QApplication::topLevelWidgets()) // no window manager gives the focus to another
        if (w->isVisible()) return w->activateWindow(), w;
    return nullptr;
}

} // namespace

Mano::Mano(unsigned semilla, long pasos, std::vector<std::filesystem::path> archivos,
           std::vector<std::function<void()>> ajenos)
    : azar_(semilla), faltan_(pasos), archivos_(std::move(archivos)), ajenos_(std::move(ajenos)) {
    QTimer::singleShot(0, &vida_, [this] { seguir(); });
}

void Mano::seguir() {
    // before anything else: a step may open a window, and that waits in a loop of its own
    QTimer::singleShot(0, &vida_, [this] { seguir(); });
    const int nivel = QThread::currentThread()->loopLevel();
    if (nivel <= nivel_) return; // still in the middle of the last step
    const QScopedValueRollback ocupada(nivel_, nivel);
    QWidget* const delante = al_frente();
    if (faltan_ > 0 && !ajenos_.empty() && (delante == nullptr || hasta(8) == 0)) {
        --faltan_;
        return ajenos_[static_cast<std::size_t>(hasta(static_cast<int>(ajenos_.size())))]();
    }
    if (delante == nullptr) return;
    if (--faltan_ <= 0 && faltan_ % 3 == 0) return cerrar(*delante); // keys leave what does not close
    if (auto* archivos = qobject_cast<QFileDialog*>(delante)) return archivo(*archivos);
    const QPointer<QWindow> ventana(delante->windowHandle());
    if (!ventana) return;
    if (hasta(4) > 0)
        tecla(ventana);
    else
        clic(ventana, *delante);
}

/// Each window asks what it has to; all is answered with what leaves it.
void Mano::cerrar(QWidget& w) {
    if (auto* dialogo = qobject_cast<QDialog*>(&w))
        dialogo->reject();
    else
        w.close();
}

void Mano::archivo(QFileDialog& dialogo) {
    if (archivos_.empty() || faltan_ <= 0 || hasta(3) == 0) return dialogo.reject();
    dialogo.selectFile(
        qt::to_qt(archivos_[static_cast<std::size_t>(hasta(static_cast<int>(archivos_.size())))].string()));
    QMetaObject::invokeMethod(&dialogo, "accept");
}

void Mano::tecla(const QPointer<QWindow>& ventana) {
    static constexpr Qt::Key ORDENES[] = {
        Qt::Key_Return, Qt::Key_Enter,     Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Escape, Qt::Key_Up,
        Qt::Key_Down,   Qt::Key_Left,      Qt::Key_Right,  Qt::Key_Home,    Qt::Key_End,    Qt::Key_PageUp,
        Qt::Key_Space,  Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_F2,      Qt::Key_F4,     Qt::Key_F5,
        Qt::Key_F6,     Qt::Key_F7,        Qt::Key_F8,     Qt::Key_F9,      Qt::Key_F10,    Qt::Key_F12};
    using namespace Qt;
    static constexpr QKeyCombination PEDIDOS[] = {
        CTRL | Key_R,         CTRL | Key_Y,         CTRL | Key_I,
        CTRL | Key_E,         CTRL | Key_F2,        CTRL | Key_F3,
        CTRL | Key_F4,        CTRL | Key_F6,        CTRL | Key_F7,
        CTRL | Key_F8,        CTRL | Key_F9,        CTRL | SHIFT | Key_A,
        CTRL | SHIFT | Key_X, CTRL | SHIFT | Key_C, CTRL | SHIFT | Key_Delete};
    static constexpr char LETRAS[] = "0123456789,.-/akcfsnty";
    const int que = hasta(12);
    Qt::KeyboardModifiers con = Qt::NoModifier;
    Qt::Key tecla = Qt::Key_Return;
    QString texto;
    if (que < 5) {
        tecla = ORDENES[static_cast<std::size_t>(hasta(std::size(ORDENES)))];
        if (hasta(8) == 0) con = hasta(2) == 0 ? Qt::ControlModifier : Qt::ShiftModifier;
    } else if (que >= 10) {
        const QKeyCombination pedido = PEDIDOS[hasta(std::size(PEDIDOS))];
        tecla = pedido.key();
        con = pedido.keyboardModifiers();
    } else {
        const char letra = que < 9 ? LETRAS[hasta(sizeof LETRAS - 1)] : static_cast<char>('a' + hasta(26));
        tecla = static_cast<Qt::Key>(QChar(letra).toUpper().unicode());
        if (que < 9)
            texto = QChar(letra);
        else
            con = hasta(3) == 0 ? Qt::AltModifier : Qt::ControlModifier;
    }
    for (const bool baja : {true, false})
        if (ventana) QTest::simulateEvent(ventana, baja, tecla, con, texto, false);
}

void Mano::clic(const QPointer<QWindow>& ventana, const QWidget& delante) {
    QList<QWidget*> visibles;
    for (QWidget* w : delante.findChildren<QWidget*>())
        if (w->isVisible() && w->window() == &delante && w->width() > 4 && w->height() > 4) visibles << w;
    const QWidget* en = visibles.isEmpty() ? &delante : visibles[hasta(static_cast<int>(visibles.size()))];
    const QPoint donde = en->mapTo(&delante, QPoint(hasta(en->width()), hasta(en->height())));
    const auto boton = hasta(12) == 0 ? Qt::RightButton : Qt::LeftButton;
    for (int veces = hasta(8) == 0 ? 2 : 1; veces > 0; --veces) {
        if (ventana) QTest::mousePress(ventana, boton, {}, donde);
        if (ventana) QTest::mouseRelease(ventana, boton, {}, donde);
    }
}

} // namespace quorvel::pruebas
