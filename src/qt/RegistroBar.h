#pragma once
#include "platform/ui/ctlRegistro.h"

#include <QColor>
#include <QWidget>
#include <array>

class QFrame;
class QLabel;
class QToolButton;

namespace quorvel::qt {

/// The record toolbar: six buttons that take no focus, why what is shown may only be read, and who works in
/// which company.
class RegistroBar : public QWidget {
    Q_OBJECT
public:
    explicit RegistroBar(QWidget* parent = nullptr);
    [[nodiscard]] QToolButton& button(ui::ctlRegistro::Function f) const;
    void show_state(const ui::ctlRegistro& registro);
    struct Notice {
        QColor ink, ground;
    };
    [[nodiscard]] static Notice notice_colours(bool dark, bool done = false);

Q_SIGNALS:
    void pressed(int function);

protected:
    void changeEvent(QEvent* event) override;

private:
    void draw_icons();
    void paint_notice();
    std::array<QToolButton*, 6> buttons_{};
    QFrame* notice_;
    bool done_ = false; ///< the notice tells of something that went well
    QLabel *sign_, *reason_, *company_, *user_;
};

} // namespace quorvel::qt
