#pragma once
#include <QDate>
#include <QWidget>

class QCalendarWidget;
class QFrame;
class QLineEdit;
class QToolButton;

namespace quorvel::qt {

/// A date as text, with a calendar that drops down. Empty is allowed, so it is no QDateEdit.
class DateBox : public QWidget {
    Q_OBJECT
public:
    explicit DateBox(QWidget* parent = nullptr);
    [[nodiscard]] QLineEdit& edit() const { return *edit_; }
    void show_calendar(QDate date);
    void set_pickable(bool pickable);

Q_SIGNALS:
    void opening();
    void picked(QDate date);

private:
    QLineEdit* edit_;
    QToolButton* button_;
    QFrame* popup_ = nullptr;
    QCalendarWidget* calendar_ = nullptr;
};

} // namespace quorvel::qt
