#include "qt/report/painting.h"

#include "qt/text.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <algorithm>

namespace quorvel::qt {

namespace {

constexpr double MM_PER_POINT = 25.4 / 72;
// Fonts are measured and drawn at this many units a millimetre, so that every device breaks lines alike.
constexpr double UNITS = 20;

QFont font_of(const report::Font& font) {
    QFont f(to_qt(font.family));
    f.setPixelSize(std::max(1, static_cast<int>(font.size * MM_PER_POINT * UNITS + 0.5)));
    f.setBold(font.bold);
    f.setItalic(font.italic);
    f.setHintingPreference(QFont::PreferNoHinting);
    return f;
}

QColor ink(int percent) {
    const int level = 255 - std::clamp(percent, 0, 100) * 255 / 100;
    return {level, level, level};
}

Qt::Alignment alignment_of(report::Align align) {
    switch (align) {
    case report::Align::center: return Qt::AlignHCenter | Qt::AlignVCenter;
    case report::Align::right: return Qt::AlignRight | Qt::AlignVCenter;
    default: return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

} // namespace

double text_width(std::string_view text, const report::Font& font) {
    return QFontMetricsF(font_of(font)).horizontalAdvance(to_qt(text)) / UNITS;
}

void paint_page(QPainter& painter, const report::Page& page) {
    painter.save();
    const auto* device = painter.device();
    painter.scale(device->logicalDpiX() / 25.4 / UNITS, device->logicalDpiY() / 25.4 / UNITS);
    const auto rect = [](double x, double y, double w, double h) {
        return QRectF(x * UNITS, y * UNITS, w * UNITS, h * UNITS);
    };
    for (const auto& box : page.boxes) {
        painter.setPen(box.pen > 0 ? QPen(Qt::black, box.pen * UNITS) : QPen(Qt::NoPen));
        painter.setBrush(box.gray > 0 ? QBrush(ink(box.gray)) : QBrush(Qt::NoBrush));
        painter.drawRect(rect(box.x, box.y, box.w, box.h));
    }
    for (const auto& line : page.lines) {
        painter.setPen(QPen(ink(line.gray), line.pen * UNITS));
        painter.drawLine(QPointF(line.x1, line.y1) * UNITS, QPointF(line.x2, line.y2) * UNITS);
    }
    painter.setPen(Qt::black);
    for (const auto& text : page.texts) {
        painter.setFont(font_of(text.font));
        const int flags = static_cast<int>(alignment_of(text.align)) | Qt::TextSingleLine | Qt::TextDontClip;
        painter.drawText(rect(text.x, text.y, text.w, text.h), flags, to_qt(text.text));
    }
    painter.restore();
}

void set_paper(QPagedPaintDevice& device, const report::Layout& layout) {
    const bool wide = layout.width > layout.height;
    const QSizeF size(std::min(layout.width, layout.height), std::max(layout.width, layout.height));
    device.setPageSize(QPageSize(size, QPageSize::Millimeter, QString(), QPageSize::FuzzyMatch));
    device.setPageOrientation(wide ? QPageLayout::Landscape : QPageLayout::Portrait);
    device.setPageMargins(QMarginsF(0, 0, 0, 0));
}

void paint_all(QPagedPaintDevice& device, const report::Layout& layout) {
    QPainter painter(&device);
    for (std::size_t i = 0; i < layout.pages.size(); ++i) {
        if (i > 0) device.newPage();
        paint_page(painter, layout.pages[i]);
    }
}

} // namespace quorvel::qt
