#include "qt/BalanceLabel.h"

#include "qt/text.h"
#include "text/numeros.h"

#include <QPainter>
#include <cmath>

namespace quorvel::qt {

BalanceLabel::BalanceLabel(QWidget* parent) : QLabel(parent) {
    setAlignment(Qt::AlignCenter);
    setTextFormat(Qt::PlainText);
    setContentsMargins(12, 0, 12, 0);
}

void BalanceLabel::show_totals(double debit, double credit) {
    const double gap = debit - credit;
    state_ = gap != 0 ? State::off : debit != 0 ? State::balanced : State::empty;
    if (state_ == State::off) {
        setText(QString::fromUtf8("≠  Diferencia %1 · falta %2")
                    .arg(to_qt(formato(std::abs(gap), "#,##0")), gap > 0 ? "Haber" : "Debe"));
    } else {
        setText(state_ == State::balanced ? QString::fromUtf8("✓  Cuadrado") : "Sin montos");
    }
    update(); // the text repaints itself only within the margins, the ground fills them too
    setAccessibleName(text());
    setToolTip(state_ == State::off ? "Explicar la diferencia (F9)" : QString());
    setCursor(state_ == State::off ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

BalanceLabel::Colours BalanceLabel::colours(bool dark, bool balanced) {
    if (dark) return balanced ? Colours{0x8fdfa8, 0x1f3a29} : Colours{0xffaaa5, 0x4d2426};
    return balanced ? Colours{0x17643a, 0xdff2e5} : Colours{0x9b1c22, 0xfbe1e1};
}

void BalanceLabel::paintEvent(QPaintEvent* event) {
    if (state_ == State::empty) return QLabel::paintEvent(event);
    const bool dark = palette().color(QPalette::Window).lightness() < 128;
    const Colours shown = colours(dark, state_ == State::balanced);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shown.ground);
    painter.drawRoundedRect(QRectF(rect()), 4, 4);
    painter.setPen(shown.ink);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
}

void BalanceLabel::mousePressEvent(QMouseEvent*) {
    if (state_ == State::off) Q_EMIT pressed();
}

} // namespace quorvel::qt
