#include "app/areas.h"

#include <QApplication>
#include <QLayout>
#include <QListWidget>
#include <QScrollArea>
#include <QStyledItemDelegate>

namespace quorvel::app {

namespace {

class RenglonAngosto final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }
};

} // namespace

QScrollArea* area_con_barra(QLayout* contenido, QWidget* parent) {
    auto* area = new QScrollArea(parent);
    auto* dentro = new QWidget(area);
    contenido->setContentsMargins(0, 0, 0, 0);
    dentro->setLayout(contenido);
    area->setWidget(dentro);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setBackgroundRole(QPalette::Window);
    dentro->setBackgroundRole(QPalette::Window);
    QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* ahora) {
        if (ahora != nullptr && area->isAncestorOf(ahora)) area->ensureWidgetVisible(ahora);
    });
    return area;
}

void acortar_renglones(QListWidget& lista) {
    lista.setItemDelegate(new RenglonAngosto(&lista));
    lista.setTextElideMode(Qt::ElideMiddle);
    lista.setResizeMode(QListView::Adjust);
}

} // namespace quorvel::app
