#include "app/dibujo.h"

#include "qt/icons.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTextCharFormat>

namespace quorvel::app {

namespace {

constexpr int BORDE = 10; // room between a card's edge and what it holds

bool oscuro(const QPalette& p) { return p.color(QPalette::Window).lightness() < 128; }

int alto_titulo(const QStyleOptionGroupBox& grupo) {
    return grupo.text.isEmpty() ? 0 : grupo.fontMetrics.height() + 6;
}

void dibujar_tarjeta(const QStyleOptionGroupBox& grupo, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(grupo.palette.color(QPalette::Midlight));
    painter.setBrush(Dibujo::fondo_tarjeta(grupo.palette));
    painter.drawRoundedRect(QRectF(grupo.rect).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    QFont letra = painter.font();
    letra.setBold(true);
    painter.setFont(letra);
    painter.setPen(grupo.palette.color(QPalette::Link));
    const QRect titulo = grupo.rect.adjusted(BORDE, 4, -BORDE, 0);
    painter.drawText(titulo, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, grupo.text);
    painter.restore();
}

void dibujar_encabezado(const QStyleOption& seccion, QPainter& painter) {
    painter.fillRect(seccion.rect, seccion.palette.color(QPalette::Button));
    painter.setPen(seccion.palette.color(QPalette::Mid));
    painter.drawLine(seccion.rect.bottomLeft(), seccion.rect.bottomRight());
    painter.drawLine(seccion.rect.topRight() + QPoint(0, 4), seccion.rect.bottomRight() - QPoint(0, 4));
}

void dibujar_marco(const QRect& rect, const QColor& color, QPainter& painter, qreal grosor, qreal radio = 3) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, grosor));
    painter.setBrush(Qt::NoBrush);
    const qreal medio = grosor / 2;
    painter.drawRoundedRect(QRectF(rect).adjusted(medio, medio, -medio, -medio), radio, radio);
    painter.restore();
}

void dibujar_foco(const QStyleOption& control, QPainter& painter, qreal grosor, qreal radio = 3) {
    dibujar_marco(control.rect, control.palette.color(QPalette::Highlight), painter, grosor, radio);
}

/// The edge of what can be filled in or pressed; the base style's cannot be seen on a dark ground.
QColor borde(const QStyleOption& control) {
    const bool activo = control.state & QStyle::State_Enabled;
    return control.palette.color(activo ? QPalette::Dark : QPalette::Mid);
}

void dibujar_borde(const QStyleOption& control, QPainter& painter, qreal radio = 3) {
    if (control.state & QStyle::State_HasFocus) return dibujar_foco(control, painter, 2, radio);
    dibujar_marco(control.rect, borde(control), painter, 1, radio);
}

/// A box with a tick or a circle with a dot.
void dibujar_marca(const QStyleOption& control, QPainter& painter, bool redonda) {
    const bool activo = control.state & QStyle::State_Enabled, marcado = control.state & QStyle::State_On;
    const QPalette& p = control.palette;
    const QColor tinta = activo ? p.color(QPalette::Highlight) : p.color(QPalette::Mid);
    const qreal lado = std::min(control.rect.width(), control.rect.height()) - 1;
    const QRectF caja(control.rect.x() + 0.5, control.rect.y() + 0.5, lado, lado);
    const qreal radio = redonda ? lado / 2 : 2.5;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(marcado ? tinta : borde(control));
    painter.setBrush(marcado ? tinta : p.color(QPalette::Base));
    painter.drawRoundedRect(caja, radio, radio);
    const QColor dentro = p.color(activo ? QPalette::HighlightedText : QPalette::Base);
    const auto punto = [&](qreal x, qreal y) { return QPointF(caja.x() + x * lado, caja.y() + y * lado); };
    if (marcado && redonda) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(dentro);
        painter.drawEllipse(caja.center(), lado * 0.2, lado * 0.2);
    } else if (marcado) {
        painter.setPen(QPen(dentro, lado * 0.14, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF{punto(0.22, 0.53), punto(0.42, 0.73), punto(0.79, 0.28)});
    }
    painter.restore();
}

/// Saturday and Sunday in a colour of the palette; the base style's red is too dark for a dark ground.
void pintar_fin_de_semana(QCalendarWidget& calendario) {
    QTextCharFormat formato;
    formato.setForeground(calendario.palette().color(QPalette::Link));
    for (const Qt::DayOfWeek dia : {Qt::Saturday, Qt::Sunday}) calendario.setWeekdayTextFormat(dia, formato);
}

} // namespace

Dibujo::Dibujo() : QProxyStyle(QStyleFactory::create("Fusion")) {}

QColor Dibujo::fondo_tarjeta(const QPalette& p) {
    return oscuro(p) ? p.color(QPalette::Window).lighter(122) : p.color(QPalette::Base);
}

void Dibujo::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                           const QWidget* widget) const {
    if (element == PE_FrameFocusRect) return dibujar_foco(*option, *painter, 1.5);
    if (element == PE_FrameLineEdit) return dibujar_borde(*option, *painter);
    if (element == PE_IndicatorCheckBox) return dibujar_marca(*option, *painter, false);
    if (element == PE_IndicatorRadioButton) return dibujar_marca(*option, *painter, true);
    const auto* caja = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (element == PE_PanelLineEdit && caja != nullptr && (caja->state & State_ReadOnly)) {
        QStyleOptionFrame sin_fondo(*caja); // what cannot be typed in looks like no field to fill in
        sin_fondo.palette.setBrush(QPalette::Base, caja->palette.brush(QPalette::Disabled, QPalette::Base));
        return QProxyStyle::drawPrimitive(element, &sin_fondo, painter, widget);
    }
    if (element == PE_Frame) return dibujar_borde(*option, *painter, 0); // what it holds has square corners
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_PanelMenu)
        dibujar_marco(option->rect, option->palette.color(QPalette::Dark), *painter, 1);
}

void Dibujo::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                         const QWidget* widget) const {
    if (element == CE_HeaderSection) return dibujar_encabezado(*option, *painter);
    const auto* renglon = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && renglon != nullptr &&
        renglon->menuItemType == QStyleOptionMenuItem::Separator) {
        const QRect r = renglon->rect.adjusted(8, 0, -8, 0);
        painter->fillRect(r.left(), r.center().y(), r.width(), 1, renglon->palette.color(QPalette::Mid));
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_TabBarTabShape && (option->state & State_Selected)) {
        const QRect r = option->rect.adjusted(3, 0, -3, -1);
        painter->fillRect(r.left(), r.bottom() - 1, r.width(), 2, option->palette.color(QPalette::Highlight));
    }
    // The base style rings only what Tab has reached; the focus also comes by a key, a click or the program.
    if (element == CE_PushButton && (option->state & State_HasFocus)) dibujar_foco(*option, *painter, 2);
}

void Dibujo::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                const QWidget* widget) const {
    if (const auto* grupo = qstyleoption_cast<const QStyleOptionGroupBox*>(option))
        return dibujar_tarjeta(*grupo, *painter);
    const auto* boton = qstyleoption_cast<const QStyleOptionToolButton*>(option);
    if (boton != nullptr && widget != nullptr && widget->objectName() == "qt_calendar_monthbutton") {
        QStyleOptionToolButton sin_flecha(*boton); // the arrow would stand on the month's last letter
        sin_flecha.features &= ~QStyleOptionToolButton::HasMenu;
        return QProxyStyle::drawComplexControl(control, &sin_flecha, painter, widget);
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox || control == CC_SpinBox) dibujar_borde(*option, *painter);
}

void Dibujo::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette,
                          bool enabled, const QString& text, QPalette::ColorRole ink) const {
    const bool un_renglon = !(flags & Qt::TextWordWrap) && !text.contains('\n');
    const QFontMetrics medida = painter->fontMetrics();
    const bool sobra = un_renglon && medida.size(Qt::TextShowMnemonic, text).width() > rect.width() + 1;
    const QString cabe =
        sobra ? medida.elidedText(text, Qt::ElideRight, rect.width(), Qt::TextShowMnemonic) : text;
    QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, cabe, ink);
}

void Dibujo::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (auto* calendario = qobject_cast<QCalendarWidget*>(widget)) pintar_fin_de_semana(*calendario);
}

QIcon Dibujo::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    const QPalette p = widget != nullptr ? widget->palette() : QApplication::palette();
    switch (icon) {
    case SP_MessageBoxInformation:
        return qt::sign_icon(u'i', p.color(QPalette::Highlight), p.color(QPalette::HighlightedText));
    case SP_MessageBoxQuestion:
        return qt::sign_icon(u'?', p.color(QPalette::Highlight), p.color(QPalette::HighlightedText));
    case SP_MessageBoxCritical: return qt::sign_icon(QChar(0xd7), QColor(0xc0, 0x2b, 0x31), Qt::white);
    case SP_MessageBoxWarning: return qt::warning_icon();
    // those of a calendar, whose bar is highlighted
    case SP_ArrowLeft: return qt::arrow_icon(true, p.color(QPalette::HighlightedText));
    case SP_ArrowRight: return qt::arrow_icon(false, p.color(QPalette::HighlightedText));
    default: return QProxyStyle::standardIcon(icon, option, widget);
    }
}

int Dibujo::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                      QStyleHintReturn* data) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

QRect Dibujo::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                             const QWidget* widget) const {
    if (const auto* grupo = qstyleoption_cast<const QStyleOptionGroupBox*>(option)) {
        if (part == SC_GroupBoxContents) return grupo->rect.adjusted(0, alto_titulo(*grupo), 0, 0);
        return grupo->rect;
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize Dibujo::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                               const QWidget* widget) const {
    QSize con_borde = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_PushButton) con_borde.setWidth(std::max(con_borde.width(), size.width() + 2 * BORDE));
    return con_borde;
}

int Dibujo::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    if (metric == PM_HeaderMargin) return 5;
    if (metric == PM_MessageBoxIconSize) return 32;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

} // namespace quorvel::app
