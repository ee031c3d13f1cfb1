#pragma once
#include <QProxyStyle>

namespace quorvel::app {

/// How the program draws what its base style draws too faintly: groups as cards, flat headers with room
/// around their captions, edges that are seen on a dark ground, and a focus that is seen on every control.
class Dibujo : public QProxyStyle {
public:
    Dibujo();
    /// What a group's card is filled with under this palette.
    [[nodiscard]] static QColor fondo_tarjeta(const QPalette& paleta);
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    /// What does not fit ends in "…" and not in the middle of a letter.
    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                      const QString& text, QPalette::ColorRole ink) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

} // namespace quorvel::app
