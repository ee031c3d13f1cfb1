#include "qt/DateBox.h"

#include <QCalendarWidget>
#include <QFrame>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QLocale>
#include <QToolButton>
#include <QVBoxLayout>

namespace quorvel::qt {

DateBox::DateBox(QWidget* parent)
    : QWidget(parent), edit_(new QLineEdit(this)), button_(new QToolButton(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(edit_, 1);
    row->addWidget(button_);
    edit_->setMaxLength(10);
    edit_->setMinimumWidth(edit_->fontMetrics().horizontalAdvance("00/00/00000") + 8);
    button_->setArrowType(Qt::DownArrow);
    button_->setFocusPolicy(Qt::NoFocus);
    button_->setAccessibleName("Calendario");
    button_->setToolTip("Calendario (Alt+Abajo)");
    setFocusProxy(edit_);
    connect(button_, &QToolButton::clicked, this, &DateBox::opening);
}

void DateBox::set_pickable(bool pickable) { button_->setEnabled(pickable); }

void DateBox::show_calendar(QDate date) {
    if (popup_ == nullptr) {
        popup_ = new QFrame(this, Qt::Popup);
        popup_->setFrameShape(QFrame::StyledPanel);
        auto* column = new QVBoxLayout(popup_);
        column->setContentsMargins(1, 1, 1, 1);
        calendar_ = new QCalendarWidget(popup_);
        calendar_->setLocale(QLocale(QLocale::Spanish, QLocale::Chile));
        calendar_->setFirstDayOfWeek(Qt::Monday);
        calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
        column->addWidget(calendar_);
        const auto pick = [this](QDate day) {
            popup_->hide();
            Q_EMIT picked(day);
        };
        connect(calendar_, &QCalendarWidget::clicked, this, pick);
        connect(calendar_, &QCalendarWidget::activated, this, pick);
    }
    calendar_->setSelectedDate(date);
    popup_->move(mapToGlobal(QPoint(0, height())));
    popup_->show();
    calendar_->setFocus();
}

} // namespace quorvel::qt
