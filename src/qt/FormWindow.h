#pragma once
#include "platform/ui/form.h"
#include "qt/Binder.h"
#include "qt/MenuBuilder.h"

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

namespace quorvel::qt {

/// The window of one form: its layout loaded, bound, and kept alike until it is retired.
class FormWindow : public QDialog {
    Q_OBJECT
public:
    FormWindow(ui::Form& form, QWidget* owner);
    ~FormWindow() override;
    [[nodiscard]] ui::Form& form() const { return form_; }
    /// What is wrong with the layout; empty for a layout that fits its form.
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }
    /// Gives the keyboard to the widget of the form's focused control.
    void focus_active();
    /// Lets go of the form at once; the window itself may be deleted later.
    void retire();
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void show_help_of_focus();
    ui::Form& form_;
    std::unique_ptr<Binder> binder_;
    std::unique_ptr<MenuBuilder> menus_;
    std::vector<ui::Connection> links_;
    std::vector<std::string> problems_;
    bool retired_ = false;
};

} // namespace quorvel::qt
