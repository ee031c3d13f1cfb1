#include "app/dibujo.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace quorvel {

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

void dibujar_foco(const QStyleOption& control, QPainter& painter, qreal grosor) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(control.palette.color(QPalette::Highlight), grosor));
    painter.setBrush(Qt::NoBrush);
    const qreal medio = grosor / 2;
    painter.drawRoundedRect(QRectF(control.rect).adjusted(medio, medio, -medio, -medio), 3, 3);
    painter.restore();
}

} // namespace

Dibujo::Dibujo() : QProxyStyle(QStyleFactory::create("Fusion")) {}

QColor Dibujo::fondo_tarjeta(const QPalette& p) {
    return oscuro(p) ? p.color(QPalette::Window).lighter(122) : p.color(QPalette::Base);
}

void Dibujo::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                           const QWidget* widget) const {
    if (element == PE_FrameFocusRect) return dibujar_foco(*option, *painter, 1.5);
    const auto* caja = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (element == PE_PanelLineEdit && caja != nullptr && (caja->state & State_ReadOnly)) {
        QStyleOptionFrame sin_fondo(*caja); // what cannot be typed in looks like no field to fill in
        sin_fondo.palette.setBrush(QPalette::Base, caja->palette.brush(QPalette::Disabled, QPalette::Base));
        return QProxyStyle::drawPrimitive(element, &sin_fondo, painter, widget);
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool lista = element == PE_Frame && qobject_cast<const QAbstractItemView*>(widget) != nullptr;
    if (lista && (option->state & State_HasFocus)) dibujar_foco(*option, *painter, 2);
}

void Dibujo::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                         const QWidget* widget) const {
    if (element == CE_HeaderSection) return dibujar_encabezado(*option, *painter);
    QProxyStyle::drawControl(element, option, painter, widget);
    // The base style rings only what Tab has reached; the focus also comes by a key, a click or the program.
    if (element == CE_PushButton && (option->state & State_HasFocus)) dibujar_foco(*option, *painter, 2);
}

void Dibujo::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                const QWidget* widget) const {
    if (const auto* grupo = qstyleoption_cast<const QStyleOptionGroupBox*>(option))
        return dibujar_tarjeta(*grupo, *painter);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox && (option->state & State_HasFocus)) dibujar_foco(*option, *painter, 2);
}

QRect Dibujo::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                             const QWidget* widget) const {
    if (const auto* grupo = qstyleoption_cast<const QStyleOptionGroupBox*>(option)) {
        if (part == SC_GroupBoxContents) return grupo->rect.adjusted(0, alto_titulo(*grupo), 0, 0);
        return grupo->rect;
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

int Dibujo::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    if (metric == PM_HeaderMargin) return 5;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

} // namespace quorvel
