#include "qt/icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace quorvel::qt {

namespace {

using Function = ui::ctlRegistro::Function;

struct Pens {
    QPen ink, accent;
};

void draw_page(QPainter& p) {
    QPainterPath page;
    page.moveTo(5, 2.5);
    page.lineTo(13, 2.5);
    page.lineTo(18, 7.5);
    page.lineTo(18, 21.5);
    page.lineTo(5, 21.5);
    page.closeSubpath();
    page.moveTo(13, 2.5);
    page.lineTo(13, 7.5);
    page.lineTo(18, 7.5);
    p.drawPath(page);
}

void draw_new(QPainter& p, const Pens& pens) {
    draw_page(p);
    p.setPen(pens.accent);
    p.drawLine(QPointF(11.5, 11), QPointF(11.5, 18));
    p.drawLine(QPointF(8, 14.5), QPointF(15, 14.5));
}

void draw_save(QPainter& p, const Pens& pens) {
    p.drawRoundedRect(QRectF(3, 3, 18, 18), 2, 2);
    p.drawRect(QRectF(7.5, 3, 9, 6));
    p.setPen(pens.accent);
    p.drawRect(QRectF(6.5, 13, 11, 8));
}

void draw_delete_line(QPainter& p, const Pens& pens) {
    for (const double y : {5.0, 12.0, 19.0}) p.drawLine(QPointF(3, y), QPointF(y == 12.0 ? 12 : 21, y));
    p.setPen(pens.accent);
    p.drawLine(QPointF(15.5, 9), QPointF(21.5, 15));
    p.drawLine(QPointF(21.5, 9), QPointF(15.5, 15));
}

void draw_print(QPainter& p, const Pens& pens) {
    p.drawLine(QPointF(7, 8), QPointF(7, 3));
    p.drawLine(QPointF(7, 3), QPointF(17, 3));
    p.drawLine(QPointF(17, 3), QPointF(17, 8));
    p.drawRoundedRect(QRectF(3, 8, 18, 9), 2, 2);
    p.setPen(pens.accent);
    p.drawRect(QRectF(7, 14, 10, 7));
}

void draw_search(QPainter& p, const Pens& pens) {
    p.drawEllipse(QPointF(10, 10), 6.5, 6.5);
    p.setPen(pens.accent);
    p.drawLine(QPointF(15, 15), QPointF(21, 21));
}

void draw_exit(QPainter& p, const Pens& pens) {
    QPainterPath door;
    door.moveTo(13, 3);
    door.lineTo(4, 3);
    door.lineTo(4, 21);
    door.lineTo(13, 21);
    p.drawPath(door);
    p.setPen(pens.accent);
    p.drawLine(QPointF(9, 12), QPointF(21, 12));
    p.drawLine(QPointF(16.5, 7.5), QPointF(21, 12));
    p.drawLine(QPointF(16.5, 16.5), QPointF(21, 12));
}

/// Paints a transparent square of this side, smoothly.
template <class Draw> QPixmap painted(int side, Draw&& draw, double scale) {
    QPixmap pixmap(static_cast<int>(side * scale), static_cast<int>(side * scale));
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    draw(p);
    return pixmap;
}

/// The same at both densities of screens.
template <class Draw> QIcon sharp(int side, Draw&& draw) {
    QIcon icon;
    for (const double scale : {1.0, 2.0}) icon.addPixmap(painted(side, draw, scale));
    return icon;
}

QPixmap drawing(Function function, const QColor& ink, const QColor& accent, double scale) {
    const auto pen = [](const QColor& color) {
        return QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    };
    using Draw = void (*)(QPainter&, const Pens&);
    static constexpr Draw drawings[] = {draw_new,   draw_save,   draw_delete_line,
                                        draw_print, draw_search, draw_exit};
    return painted(
        24,
        [&](QPainter& p) {
            const Pens pens{pen(ink), pen(accent)};
            p.setPen(pens.ink);
            drawings[static_cast<int>(function)](p, pens);
        },
        scale);
}

} // namespace

QIcon toolbar_icon(Function function, const QColor& ink, const QColor& accent) {
    QIcon icon;
    QColor faint = ink;
    faint.setAlphaF(0.35f);
    for (const double scale : {1.0, 2.0}) {
        icon.addPixmap(drawing(function, ink, accent, scale));
        icon.addPixmap(drawing(function, faint, faint, scale), QIcon::Disabled);
    }
    return icon;
}

QIcon warning_icon() {
    return sharp(32, [](QPainter& p) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0xc0, 0x2b, 0x31));
        p.drawPolygon(QPolygonF{QPointF(16, 2), QPointF(31, 29), QPointF(1, 29)});
        p.setPen(QPen(Qt::white, 3.5, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(16, 12), QPointF(16, 19));
        p.drawPoint(QPointF(16, 24.5));
    });
}

QIcon sign_icon(QChar sign, const QColor& ground, const QColor& ink) {
    return sharp(32, [&](QPainter& p) {
        p.setPen(Qt::NoPen);
        p.setBrush(ground);
        p.drawEllipse(QRectF(1, 1, 30, 30));
        QFont letter = p.font();
        letter.setPixelSize(22);
        letter.setBold(true);
        p.setFont(letter);
        p.setPen(ink);
        p.drawText(QRectF(0, 0, 32, 32), Qt::AlignCenter, QString(sign));
    });
}

QIcon arrow_icon(bool left, const QColor& ink) {
    return sharp(16, [&](QPainter& p) {
        p.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const double tip = left ? 6 : 10, ends = 16 - tip;
        p.drawPolyline(QPolygonF{QPointF(ends, 4), QPointF(tip, 8), QPointF(ends, 12)});
    });
}

QIcon lock_icon(const QColor& ink) {
    return sharp(48, [&](QPainter& p) {
        p.setPen(QPen(ink, 4, Qt::SolidLine, Qt::RoundCap));
        p.drawArc(QRectF(14, 5, 20, 26), 0, 180 * 16);
        p.drawLine(QPointF(14, 18), QPointF(14, 24));
        p.drawLine(QPointF(34, 18), QPointF(34, 24));
        p.setPen(Qt::NoPen);
        p.setBrush(ink);
        p.drawRoundedRect(QRectF(8, 21, 32, 23), 4, 4);
    });
}

QIcon program_icon() {
    return sharp(64, [](QPainter& p) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0x1f, 0x5f, 0x8b));
        p.drawRoundedRect(4, 4, 56, 56, 12, 12);
        p.setPen(QPen(Qt::white, 5, Qt::SolidLine, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(QPointF(31, 31), 15, 15);
        p.drawLine(QPointF(37, 37), QPointF(48, 48));
    });
}

} // namespace quorvel::qt
