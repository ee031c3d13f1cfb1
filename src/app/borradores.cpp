#include "app/borradores.h"

#include "app/areas.h"
#include "app/avisos.h"
#include "qt/icons.h"
#include "qt/screen_room.h"
#include "qt/text.h"
#include "text/cuantos.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvel::app {

using qt::to_qt;

namespace {

QString linea(const BorradorLibre& b) {
    const QString que = b.documento.empty() || b.documento == "(Ninguno)"
                            ? QString::fromUtf8("Sin documento")
                            : to_qt(b.documento + " Nº " + b.numero);
    return QString::fromUtf8("%1, fecha %2, %3\n%4\nescrito el %5")
        .arg(que, to_qt(b.fecha), to_qt(cuantos(static_cast<std::int64_t>(b.lineas), "línea", "líneas")))
        .arg(b.glosa.empty() ? QString("(sin glosa)") : to_qt(b.glosa), to_qt(b.cuando));
}

} // namespace

std::optional<std::filesystem::path> elegir_borrador(const std::vector<BorradorLibre>& libres,
                                                     QWidget* owner) {
    if (libres.empty()) return std::nullopt;
    QDialog dialogo(owner);
    dialogo.setObjectName("borradores");
    dialogo.setWindowTitle("Comprobantes sin grabar");
    dialogo.setWindowIcon(qt::program_icon());
    auto* lista = new QListWidget(&dialogo);
    lista->setAccessibleName("Comprobantes sin grabar");
    lista->setAlternatingRowColors(true);
    lista->setSpacing(3);
    acortar_renglones(*lista);
    lista->setTextElideMode(Qt::ElideRight);
    for (const BorradorLibre& b : libres) {
        auto* item = new QListWidgetItem(linea(b), lista);
        item->setData(Qt::UserRole, to_qt(b.archivo.string()));
        item->setToolTip(item->text());
    }
    lista->setCurrentRow(0);
    auto* fila = new QHBoxLayout;
    const auto boton = [&](const char* texto, auto accion) {
        auto* b = new QPushButton(QString::fromUtf8(texto), &dialogo);
        b->setAutoDefault(false);
        QObject::connect(b, &QPushButton::clicked, &dialogo, accion);
        fila->addWidget(b);
        return b;
    };
    fila->addStretch(1);
    boton("&Recuperar", [&] { dialogo.accept(); })->setDefault(true);
    boton("&Descartar…", [&] {
        QListWidgetItem* const elegido = lista->currentItem();
        if (elegido == nullptr) return;
        const QString cual = elegido->text().section('\n', 0, 0);
        if (!preguntar(&dialogo, QString::fromUtf8("¿Borrar el borrador?\n%1").arg(cual))) return;
        descartar_borrador(qt::to_std(elegido->data(Qt::UserRole).toString()));
        delete elegido;
        if (lista->count() == 0) dialogo.reject();
    })->setToolTip("Borra el borrador elegido; no se podrá recuperar");
    boton("&Más tarde", [&] { dialogo.reject(); });
    QObject::connect(lista, &QListWidget::itemActivated, &dialogo, [&] { dialogo.accept(); });
    auto* columna = new QVBoxLayout(&dialogo);
    columna->setContentsMargins(16, 14, 16, 14);
    columna->setSpacing(10);
    columna->addWidget(
        new QLabel(QString::fromUtf8("Quedaron comprobantes sin grabar. ¿Cuál desea recuperar?"), &dialogo));
    columna->addWidget(lista, 1);
    columna->addLayout(fila);
    qt::resize_within_screen(dialogo, {560, 320});
    lista->setFocus();
    if (dialogo.exec() != QDialog::Accepted || lista->currentItem() == nullptr) return std::nullopt;
    return qt::to_std(lista->currentItem()->data(Qt::UserRole).toString());
}

} // namespace quorvel::app
