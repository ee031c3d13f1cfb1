#pragma once
#include "qt/Binding.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvel::qt {

/// Binds the widgets of a loaded layout to the controls of a form, by name without regard to case.
class Binder {
public:
    Binder(ui::Form& form, QWidget& layout);
    /// Controls without a widget, widgets of the wrong class, widgets without a control. Empty when all is
    /// well.
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }
    /// @return nullptr when the control has no widget
    [[nodiscard]] Binding* find(const ui::Control* control) const;
    void pull_all();
    /// Lets go of the form.
    void detach();

private:
    void bind(ui::Control& control, const std::vector<QWidget*>& named);
    void name_labels(QWidget& layout);
    void follow_differences(ui::Form& form, QWidget& layout);
    std::vector<std::unique_ptr<Binding>> bindings_;
    std::vector<std::string> problems_;
    std::vector<ui::Connection> links_;
};

} // namespace quorvel::qt
