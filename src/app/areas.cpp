#include "app/areas.h"

#include <QListWidget>
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

void acortar_renglones(QListWidget& lista) {
    lista.setItemDelegate(new RenglonAngosto(&lista));
    lista.setTextElideMode(Qt::ElideMiddle);
    lista.setResizeMode(QListView::Adjust);
}

} // namespace quorvel::app
