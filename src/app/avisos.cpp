#include "app/avisos.h"

#include <QMessageBox>
#include <QPushButton>

namespace quorvel::app {

namespace {
constexpr const char* TITULO = "Mensaje";
}

void avisar(QWidget* owner, const QString& texto) { QMessageBox::information(owner, TITULO, texto); }
void avisar_problema(QWidget* owner, const QString& texto) { QMessageBox::critical(owner, TITULO, texto); }

bool preguntar(QWidget* owner, const QString& texto) {
    QMessageBox caja(QMessageBox::Question, TITULO, texto, QMessageBox::NoButton, owner);
    auto* si = caja.addButton(QString::fromUtf8("&Sí"), QMessageBox::YesRole);
    caja.setDefaultButton(caja.addButton("&No", QMessageBox::NoRole));
    caja.exec();
    return caja.clickedButton() == si;
}

} // namespace quorvel::app
