#pragma once
#include <string>

class QString;
class QWidget;

namespace quorvel::ui {
class Control;
}

namespace quorvel::qt {

/// What the help says of a control; of a grid, of the column in which its cursor stands. Empty where there is
/// nothing. The texts are in data/ui/ayuda.csv.
[[nodiscard]] QString help_text(const ui::Control& control);
/// Shows it beside the control's widget until the next key or click.
void show_help(const ui::Control& control, QWidget& widget);

} // namespace quorvel::qt
