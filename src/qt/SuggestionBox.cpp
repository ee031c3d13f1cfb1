#include "qt/SuggestionBox.h"

#include "qt/text.h"

#include <algorithm>

namespace quorvel::qt {

namespace {
constexpr int WIDTH = 440, ROOM = 6;
} // namespace

SuggestionBox::SuggestionBox(QWidget& window) : QListWidget(&window) {
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName("Sugerencias");
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideRight);
    connect(this, &QListWidget::itemPressed, this, [this](QListWidgetItem* item) {
        if (item->flags() & Qt::ItemIsEnabled) Q_EMIT taken(row(item));
    });
    hide();
}

void SuggestionBox::fill(const ui::Suggestions& suggestions) {
    clear();
    for (const ui::Suggestion& s : suggestions.rows())
        addItem(to_qt(s.code) + QString::fromUtf8("   ") + to_qt(s.text));
    if (suggestions.missed()) {
        addItem("Ningún nombre empieza así");
        item(0)->setFlags(Qt::NoItemFlags);
    }
    for (int i = 0; i < count(); ++i) item(i)->setSizeHint({0, fontMetrics().height() + ROOM});
    setCurrentRow(suggestions.current());
}

void SuggestionBox::show_under(const QWidget& owner, const QRect& cell, const ui::Suggestions& suggestions) {
    fill(suggestions);
    if (count() == 0) return hide();
    QWidget& window = *parentWidget();
    const QPoint below = owner.mapTo(&window, cell.bottomLeft()),
                 above = owner.mapTo(&window, cell.topLeft());
    const int height = sizeHintForRow(0) * count() + 2 * frameWidth();
    const int width = std::min(WIDTH, window.width());
    const bool fits = below.y() + height <= window.height();
    setGeometry(std::clamp(below.x(), 0, window.width() - width), fits ? below.y() + 1 : above.y() - height,
                width, height);
    show();
    raise();
}

} // namespace quorvel::qt
