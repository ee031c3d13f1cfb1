#include "qt/QtEscritorio.h"

#include "qt/FormWindow.h"
#include "qt/ProgressBox.h"
#include "qt/file_dialog.h"
#include "qt/message_text.h"
#include "qt/text.h"

#include <QApplication>
#include <QDesktopServices>
#include <QEventLoop>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>
#include <algorithm>

namespace quorvel::qt {

/// One event loop inside another: afterwards the window that is then on top gets the keys back.
struct QtEscritorio::Nested {
    explicit Nested(QtEscritorio& owner) : escritorio(owner) { ++escritorio.depth_; }
    ~Nested() {
        --escritorio.depth_;
        escritorio.activate_top();
        escritorio.purge();
    }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;
    QtEscritorio& escritorio;
};

QtEscritorio::QtEscritorio() = default;

QtEscritorio::~QtEscritorio() {
    for (const auto* list : {&windows_, &retired_})
        for (const Open& open : *list) delete open.window;
}

FormWindow* QtEscritorio::window_of(const ui::Form& form) const {
    const auto it = std::find_if(windows_.rbegin(), windows_.rend(),
                                 [&](const Open& open) { return open.form == &form; });
    return it == windows_.rend() ? nullptr : it->window;
}

FormWindow* QtEscritorio::top_window() const {
    const ui::Form* form = top();
    return form == nullptr ? nullptr : window_of(*form);
}

FormWindow* QtEscritorio::owner_window() const {
    FormWindow* const owner = acting() == nullptr ? nullptr : window_of(*acting());
    return owner != nullptr ? owner : top_window();
}

void QtEscritorio::activate_top() {
    FormWindow* window = top_window();
    if (window == nullptr || !window->isVisible()) return;
    window->raise();
    window->activateWindow();
    window->focus_active();
}

void QtEscritorio::on_open(ui::Form& form, bool modal) {
    if (FormWindow* shown = window_of(form)) {
        shown->raise();
        shown->activateWindow();
        return;
    }
    auto* window = new FormWindow(form, modal && acting() != nullptr ? owner_window() : nullptr);
    for (const auto& problem : window->problems()) qWarning("%s: %s", form.name().c_str(), problem.c_str());
    window->setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    windows_.push_back({&form, window, depth_, nullptr});
    window->show();
    window->activateWindow();
    window->focus_active();
}

void QtEscritorio::on_close(ui::Form& form) {
    const auto it =
        std::find_if(windows_.begin(), windows_.end(), [&](const Open& open) { return open.form == &form; });
    if (it == windows_.end()) return;
    const Open open = *it;
    windows_.erase(it);
    open.window->retire();
    // The window may be in the middle of one of its own events: it goes when those have returned.
    retired_.push_back(open);
    if (open.waiting) open.waiting->quit();
    QTimer::singleShot(0, &context_, [this] { purge(); });
    activate_top();
}

void QtEscritorio::purge() {
    std::vector<Open> gone;
    std::erase_if(retired_, [&](const Open& open) {
        if (open.depth < depth_ || (open.waiting && open.waiting->isRunning())) return false;
        gone.push_back(open);
        return true;
    });
    for (const Open& open : gone) open.window->deleteLater();
}

void QtEscritorio::wait(ui::Form& form) {
    const Nested nested(*this);
    while (form.visible()) {
        const auto it = std::find_if(windows_.begin(), windows_.end(),
                                     [&](const Open& open) { return open.form == &form; });
        if (it == windows_.end()) return;
        QEventLoop loop;
        it->waiting = &loop;
        loop.exec(QEventLoop::DialogExec);
        if (QCoreApplication::closingDown()) return;
    }
}

ui::Answer QtEscritorio::on_message(const std::string& text, ui::Icon icon, ui::Buttons buttons,
                                    const std::string& title) {
    static constexpr QMessageBox::Icon icons[] = {QMessageBox::Critical, QMessageBox::Warning,
                                                  QMessageBox::Information, QMessageBox::Question};
    const Nested nested(*this);
    QMessageBox box(icons[static_cast<int>(icon)], to_qt(title), to_qt(text), QMessageBox::NoButton,
                    owner_window());
    on_call_off([&box] { box.reject(); });
    box.setTextFormat(Qt::PlainText);
    make_room(box);
    if (buttons == ui::Buttons::ok) {
        auto* accept = box.addButton("Aceptar", QMessageBox::AcceptRole);
        box.setEscapeButton(accept);
        box.exec();
        return ui::Answer::ok;
    }
    auto* yes = box.addButton(QString::fromUtf8("&Sí"), QMessageBox::YesRole);
    auto* no = box.addButton("&No", QMessageBox::NoRole);
    box.setDefaultButton(no); // whatever is asked changes much or cannot be undone
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes ? ui::Answer::yes : ui::Answer::no;
}

QStringList QtEscritorio::choose(const ui::FileRequest& request, Choose what) {
    const Nested nested(*this);
    FileQuestion question{.title = to_qt(request.title),
                          .proposed = to_qt(request.name),
                          .what = what,
                          .before = [this](QDialog& dialog) { on_call_off([&dialog] { dialog.reject(); }); }};
    if (!request.filter.empty() && request.filter != "*") question.filters << to_qt(request.filter);
    question.filters << "Todos los archivos (*)";
    return qt::choose_files(owner_window(), question);
}

std::optional<std::string> QtEscritorio::on_ask_file(const ui::FileRequest& request) {
    const QStringList files = choose(request, request.save ? Choose::save : Choose::file);
    return files.isEmpty() ? std::nullopt : std::optional(to_std(files.front()));
}

std::vector<std::string> QtEscritorio::on_ask_files(const ui::FileRequest& request) {
    std::vector<std::string> files;
    for (const QString& file : choose(request, Choose::files)) files.push_back(to_std(file));
    return files;
}

void QtEscritorio::open_with(const std::string& path) {
    const QString file = to_qt(path);
    // The path is an argument of its own: nothing in a file name is ever read as a command.
    const QString opener = QStandardPaths::findExecutable("xdg-open");
    if (!opener.isEmpty() && QProcess::startDetached(opener, {file})) return;
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(file))) return;
    message("No hay un programa para abrir " + path, ui::Icon::warning, ui::Buttons::ok);
}

void QtEscritorio::busy(bool on) {
    if (on == busy_) return;
    busy_ = on;
    if (on)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

bool QtEscritorio::on_progress(const std::string& what, long done, long total) {
    if (!progress_) progress_ = std::make_unique<ProgressBox>(owner_window());
    return progress_->report(what, done, total);
}

void QtEscritorio::later(std::function<void()> what) { QTimer::singleShot(0, &context_, std::move(what)); }

void QtEscritorio::progress_done() {
    if (!progress_) return;
    progress_.reset();
    activate_top();
}

} // namespace quorvel::qt
