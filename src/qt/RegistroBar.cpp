#include "qt/RegistroBar.h"

#include "platform/ui/form.h"
#include "qt/BalanceLabel.h"
#include "qt/bindings.h"
#include "qt/icons.h"
#include "qt/text.h"

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

namespace quorvel::qt {

namespace {

struct FunctionRow {
    const char* text;
    const char* key;
    const char* why_off;
};
constexpr FunctionRow FUNCTIONS[] = {
    {"Nuevo", "F2 o Ctrl+N", ""},
    {"Grabar", "F5", "El comprobante no se puede modificar"},
    {"Borrar línea", "F8", "No tiene permiso para borrar líneas: pídalo a quien administra los usuarios"},
    {"Imprimir", "F6", "No tiene permiso para imprimir: pídalo a quien administra los usuarios"},
    {"Buscar", "F3", ""},
    {"Salir", "Ctrl+Q", ""},
};

} // namespace

RegistroBar::RegistroBar(QWidget* parent)
    : QWidget(parent), notice_(new QFrame(this)), sign_(new QLabel(notice_)), reason_(new QLabel(notice_)),
      company_(new QLabel(this)), user_(new QLabel(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        auto* button = new QToolButton(this);
        button->setText(FUNCTIONS[i].text);
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setIconSize({24, 24});
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setMinimumWidth(64);
        connect(button, &QToolButton::clicked, this, [this, i] { Q_EMIT pressed(static_cast<int>(i)); });
        buttons_[i] = button;
        row->addWidget(button);
    }
    notice_->setAutoFillBackground(true);
    notice_->hide();
    reason_->setTextFormat(Qt::PlainText);
    reason_->setWordWrap(true);
    auto* inside = new QHBoxLayout(notice_);
    inside->setContentsMargins(10, 4, 10, 4);
    inside->addWidget(sign_);
    inside->addWidget(reason_, 1);
    row->addSpacing(12);
    row->addWidget(notice_, 1000, Qt::AlignVCenter);
    row->addStretch(1);
    row->addSpacing(12);
    auto* who = new QVBoxLayout;
    who->setSpacing(0);
    for (QLabel* label : {company_, user_}) {
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setTextFormat(Qt::PlainText);
        who->addWidget(label);
    }
    QFont bold = company_->font();
    bold.setBold(true);
    company_->setFont(bold);
    row->addLayout(who);
    draw_icons();
}

QToolButton& RegistroBar::button(ui::ctlRegistro::Function f) const {
    return *buttons_.at(static_cast<std::size_t>(f));
}

void RegistroBar::draw_icons() {
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        buttons_[i]->setIcon(toolbar_icon(static_cast<ui::ctlRegistro::Function>(i),
                                          palette().color(QPalette::ButtonText),
                                          palette().color(QPalette::Highlight)));
    }
    paint_notice();
}

void RegistroBar::paint_notice() {
    const Notice shown = notice_colours(palette().color(QPalette::Window).lightness() < 128, done_);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, shown.ground);
    colours.setColor(QPalette::WindowText, shown.ink);
    notice_->setPalette(colours);
    sign_->setPixmap(lock_icon(shown.ink).pixmap(20, 20));
}

RegistroBar::Notice RegistroBar::notice_colours(bool dark, bool done) {
    if (done) {
        const auto good = BalanceLabel::colours(dark, true);
        return {good.ink, good.ground};
    }
    return dark ? Notice{0xffd98a, 0x463714} : Notice{0x5c4300, 0xfdf0cf};
}

void RegistroBar::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && buttons_.back() != nullptr) draw_icons();
    QWidget::changeEvent(event);
}

void RegistroBar::show_state(const ui::ctlRegistro& registro) {
    const QString reason = to_qt(registro.ToolTip());
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const bool on = registro.enabled(static_cast<ui::ctlRegistro::Function>(i));
        buttons_[i]->setEnabled(on);
        buttons_[i]->setToolTip(on ? QString("%1 (%2)").arg(FUNCTIONS[i].text, FUNCTIONS[i].key)
                                : reason.isEmpty() ? QString(FUNCTIONS[i].why_off)
                                                   : reason);
    }
    const QString notice = to_qt(registro.Notice());
    notice_->setVisible(!registro.ModifyEnabled() || !notice.isEmpty());
    sign_->setVisible(!registro.ModifyEnabled());
    if (std::exchange(done_, registro.NoticeDone()) != registro.NoticeDone()) paint_notice();
    reason_->setText(registro.ModifyEnabled() ? (done_ ? QString::fromUtf8("✓  ") : QString()) + notice
                     : reason.isEmpty()       ? "Solo lectura"
                                              : QString::fromUtf8("Solo lectura  ·  ") + reason);
    company_->setText(to_qt(registro.Company()));
    QString user = to_qt(registro.User());
    if (!registro.Program().empty()) user += QString::fromUtf8("  ·  ") + to_qt(registro.Program());
    user_->setText(user);
}

RegistroBinding::RegistroBinding(RegistroBar& bar, ui::ctlRegistro& control)
    : Binding(bar, control), bar_(bar), registro_(control) {
    connect(&bar, &RegistroBar::pressed, this, [this](int function) {
        registro_.form().atender([&] { registro_.press(static_cast<ui::ctlRegistro::Function>(function)); });
    });
}

void RegistroBinding::pull_state() { bar_.show_state(registro_); }

} // namespace quorvel::qt
