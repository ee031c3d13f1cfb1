#include "qt/message_text.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QScrollArea>
#include <algorithm>

namespace quorvel::qt {
namespace {

constexpr int WIDEST = 560, LINES = 20;

void scroll(QMessageBox& box, QLabel& text, int height) {
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (grid == nullptr) return;
    int row = 0, column = 0, rows = 1, columns = 1;
    grid->getItemPosition(grid->indexOf(&text), &row, &column, &rows, &columns);
    auto* area = new QScrollArea(&box);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setMinimumSize(WIDEST + 30, height);
    grid->removeWidget(&text);
    text.setMinimumWidth(0);
    text.setWordWrap(true);
    text.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    area->setWidget(&text);
    grid->addWidget(area, row, column, rows, columns);
}

} // namespace

void make_room(QMessageBox& box) {
    auto* text = box.findChild<QLabel*>("qt_msgbox_label");
    if (text == nullptr) return;
    const QFontMetrics font = text->fontMetrics();
    const QRect needed = font.boundingRect(0, 0, WIDEST, 1 << 24, Qt::TextWordWrap, box.text());
    text->setMinimumWidth(std::min(needed.width() + 4, WIDEST));
    if (needed.height() > LINES * font.lineSpacing()) scroll(box, *text, LINES * font.lineSpacing());
}

} // namespace quorvel::qt
