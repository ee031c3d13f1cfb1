#pragma once
#include "platform/ui/ctlRegistro.h"

#include <QWidget>
#include <array>

class QLabel;
class QToolButton;

namespace quorvel::qt {

/// The record toolbar: six buttons that take no focus, and who works in which company.
class RegistroBar : public QWidget {
    Q_OBJECT
public:
    explicit RegistroBar(QWidget* parent = nullptr);
    [[nodiscard]] QToolButton& button(ui::ctlRegistro::Function f) const;
    void show_state(const ui::ctlRegistro& registro);

Q_SIGNALS:
    void pressed(int function);

protected:
    void changeEvent(QEvent* event) override;

private:
    void draw_icons();
    std::array<QToolButton*, 6> buttons_{};
    QLabel *company_, *user_;
};

} // namespace quorvel::qt
