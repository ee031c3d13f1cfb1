#include "qt/FormWindow.h"

#include "qt/UiLoader.h"
#include "qt/help.h"
#include "qt/icons.h"
#include "qt/keys.h"
#include "qt/screen_room.h"
#include "qt/text.h"

#include <QAction>
#include <QCloseEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QScrollArea>
#include <QUrl>
#include <QVBoxLayout>

namespace quorvel::qt {

FormWindow::FormWindow(ui::Form& form, QWidget* owner)
    : QDialog(owner, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      form_(form) {
    setObjectName(to_qt(form.name()));
    setWindowTitle(to_qt(form.Caption()));
    setWindowIcon(program_icon());
    setAcceptDrops(form.takes_files());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* bar = new QMenuBar(this);
    menus_ = std::make_unique<MenuBuilder>(form, *bar);
    if (menus_->empty())
        delete bar;
    else
        column->setMenuBar(bar);
    if (QWidget* layout = UiLoader().load_form(form.name(), this, problems_)) {
        const QSize wanted = layout->size(); // the area gives it another
        column->addWidget(scroll_area(layout, this));
        resize_within_screen(*this, wanted);
        binder_ = std::make_unique<Binder>(form, *layout);
        problems_.insert(problems_.end(), binder_->problems().begin(), binder_->problems().end());
    }
    auto* help = new QAction(this);
    help->setObjectName("ayuda");
    help->setShortcut(Qt::Key_F1);
    connect(help, &QAction::triggered, this, [this] { show_help_of_focus(); });
    addAction(help);
    links_.push_back(form.Changed.connect([this] { setWindowTitle(to_qt(form_.Caption())); }));
    links_.push_back(form.FocusMoved.connect([this] { focus_active(); }));
}

FormWindow::~FormWindow() = default;

void FormWindow::focus_active() {
    if (retired_ || !binder_) return;
    const ui::Control* active = form_.active_control();
    Binding* binding = active == nullptr ? nullptr : binder_->find(active);
    if (binding == nullptr) return;
    binding->focused();
    QWidget& target = binding->focus_target();
    if (!target.hasFocus()) target.setFocus(Qt::OtherFocusReason);
}

void FormWindow::show_help_of_focus() {
    const ui::Control* active = form_.active_control();
    Binding* binding = retired_ || !binder_ || active == nullptr ? nullptr : binder_->find(active);
    if (binding != nullptr) show_help(*active, binding->widget());
}

void FormWindow::retire() {
    if (retired_) return;
    retired_ = true;
    links_.clear();
    menus_.reset();
    if (binder_) binder_->detach();
    for (QObject* child : findChildren<QObject*>()) child->blockSignals(true);
    hide();
}

void FormWindow::reject() {
    if (!retired_) form_.close_by_user();
}

void FormWindow::closeEvent(QCloseEvent* event) {
    // The form decides; when it agrees it takes the window away itself.
    event->ignore();
    reject();
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
    auto e = translate(*event);
    if (retired_ || !e) return;
    form_.send_key(*e);
    event->setAccepted(e->handled);
}

void FormWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || !isActiveWindow() || retired_) return;
    form_.escritorio().bring_to_top(form_); // of two screens the person turns to this one
    focus_active();
}

void FormWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void FormWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    for (const QUrl& url : event->mimeData()->urls()) {
        if (!url.isLocalFile()) continue;
        // The program that the file comes from waits for the end of this event, not for what the form asks.
        QMetaObject::invokeMethod(
            this,
            [this, path = to_std(url.toLocalFile())] {
                if (!retired_) form_.drop_file(path);
            },
            Qt::QueuedConnection);
    }
}

} // namespace quorvel::qt
