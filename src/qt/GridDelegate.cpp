#include "qt/GridDelegate.h"

#include "qt/BalanceLabel.h"
#include "qt/GridModel.h"
#include "qt/GridView.h"

#include <QLineEdit>
#include <QPainter>

namespace quorvel::qt {

namespace {

bool is_dark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

QColor blend(const QColor& over, const QColor& under, double share) {
    const auto mix = [share](int a, int b) { return static_cast<int>(a * share + b * (1 - share)); };
    return {mix(over.red(), under.red()), mix(over.green(), under.green()), mix(over.blue(), under.blue())};
}

void paint_button(QPainter& painter, const QRect& rect, const QPalette& palette) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette.color(QPalette::Mid));
    painter.setBrush(palette.color(QPalette::Button));
    painter.drawRoundedRect(QRectF(rect).adjusted(1.5, 2.5, -1.5, -2.5), 2, 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::ButtonText));
    const QPointF centre = QRectF(rect).center();
    for (const int step : {-1, 0, 1}) painter.drawEllipse(centre + QPointF(step * 4.0, 1), 1.2, 1.2);
    painter.restore();
}

} // namespace

GridDelegate::GridDelegate(GridView& view) : QStyledItemDelegate(&view), view_(view) {}

/// Behind the code, as far as there is room for more than a letter or two.
void GridDelegate::paint_note(QPainter& painter, QRect room, const QStyleOptionViewItem& option,
                              const QModelIndex& index) {
    constexpr int GAP = 8, LEAST = 30;
    const QString note = index.data(GridModel::NoteRole).toString();
    room.setLeft(room.left() + GAP +
                 option.fontMetrics.horizontalAdvance(index.data(Qt::DisplayRole).toString()));
    if (note.isEmpty() || room.width() < LEAST) return;
    painter.setPen(option.palette.color(QPalette::PlaceholderText));
    painter.drawText(room, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine),
                     option.fontMetrics.elidedText(note, Qt::ElideRight, room.width()));
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const QModelIndex current = view_.currentIndex();
    const bool on_row = current.isValid() && current.row() == index.row();
    const QPalette& palette = option.palette;
    const QColor accent = palette.color(QPalette::Highlight);
    if (on_row) painter->fillRect(option.rect, blend(accent, palette.color(QPalette::Base), 0.12));
    painter->setPen(blend(palette.color(QPalette::Mid), palette.color(QPalette::Base), 0.6));
    painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    QRect text_rect = option.rect.adjusted(5, 0, -5, 0);
    const QRect button = view_.button_rect(index.row(), index.column());
    if (button.isValid()) text_rect.setRight(button.left() - 2);
    painter->save();
    // The zero of the other side is there, but it is not what one reads a line for.
    const bool idle = index.data(Qt::DisplayRole).toString() == "0";
    painter->setPen(palette.color(idle ? QPalette::PlaceholderText : QPalette::Text));
    const auto alignment = Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt());
    const QString text = option.fontMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight,
                                                       text_rect.width());
    painter->drawText(text_rect, static_cast<int>(alignment | Qt::TextSingleLine), text);
    paint_note(*painter, text_rect, option, index);
    if (on_row && index.column() == current.column()) {
        const bool focused = view_.hasFocus() || view_.editor().hasFocus();
        const QColor frame = view_.marks_refusal() ? BalanceLabel::colours(is_dark(palette), false).ink
                             : focused             ? accent
                                                   : palette.color(QPalette::Mid);
        painter->setPen(QPen(frame, 2));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
    }
    painter->restore();
    if (button.isValid()) paint_button(*painter, button, palette);
}

QSize GridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {40, option.fontMetrics.height() + 8};
}

} // namespace quorvel::qt
