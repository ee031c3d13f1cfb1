#include "app/avisos.h"

#include <QMessageBox>
#include <QPushButton>

namespace quorvel::app {

namespace {
constexpr const char* TITULO = "Mensaje";

/// The keys go back to the window that the box stood on, which not every desktop sees to.
void devolver_teclas(QWidget* owner) {
    if (owner != nullptr) owner->window()->activateWindow();
}
} // namespace

void avisar(QWidget* owner, const QString& texto) {
    QMessageBox::information(owner, TITULO, texto);
    devolver_teclas(owner);
}
void avisar_problema(QWidget* owner, const QString& texto) {
    QMessageBox::critical(owner, TITULO, texto);
    devolver_teclas(owner);
}

bool preguntar(QWidget* owner, const QString& texto) {
    QMessageBox caja(QMessageBox::Question, TITULO, texto, QMessageBox::NoButton, owner);
    auto* si = caja.addButton(QString::fromUtf8("&Sí"), QMessageBox::YesRole);
    caja.setDefaultButton(caja.addButton("&No", QMessageBox::NoRole));
    caja.exec();
    devolver_teclas(owner);
    return caja.clickedButton() == si;
}

} // namespace quorvel::app
