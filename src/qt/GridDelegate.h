#pragma once
#include <QStyledItemDelegate>

namespace quorvel::qt {

class GridView;

/// Paints cells: the current cell framed, its row tinted, a lookup button where the column has one.
class GridDelegate : public QStyledItemDelegate {
public:
    explicit GridDelegate(GridView& view);
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    static void paint_note(QPainter& painter, QRect room, const QStyleOptionViewItem& option,
                           const QModelIndex& index);
    GridView& view_;
};

} // namespace quorvel::qt
