#pragma once
#include <QObject>
#include <QPointer>
#include <filesystem>
#include <functional>
#include <random>
#include <vector>

class QFileDialog;
class QWidget;
class QWindow;

namespace quorvel::pruebas {

/// A person who presses keys and clicks at random on whatever window is in front, and meanwhile lets others
/// do what they want. After its steps it leaves every window that comes up.
class Mano {
public:
    /// @param archivos given to file dialogs @param ajenos done now and then, also while a dialog waits
    Mano(unsigned semilla, long pasos, std::vector<std::filesystem::path> archivos,
         std::vector<std::function<void()>> ajenos = {});
    [[nodiscard]] bool termino() const { return faltan_ <= 0; }
    int hasta(int n) { return static_cast<int>(azar_() % static_cast<unsigned>(n)); }

private:
    void seguir();
    void cerrar(QWidget& w);
    void archivo(QFileDialog& dialogo);
    void tecla(const QPointer<QWindow>& ventana);
    void clic(const QPointer<QWindow>& ventana, const QWidget& delante);
    std::mt19937 azar_;
    long faltan_;
    std::vector<std::filesystem::path> archivos_;
    std::vector<std::function<void()>> ajenos_;
    int nivel_ = -1; ///< of the event loop whose step is under way
    QObject vida_;
};

} // namespace quorvel::pruebas
