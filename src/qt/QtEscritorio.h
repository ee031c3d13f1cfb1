#pragma once
#include "platform/ui/entry_maker.h"
#include "platform/ui/escritorio.h"
#include "qt/file_dialog.h"

#include <QObject>
#include <QPointer>
#include <memory>
#include <vector>

class QEventLoop;

namespace quorvel::qt {

class FormWindow;
class ProgressBox;

/// The desktop with windows. Keeps its own order of open windows: after a modal one closes, the one below is
/// activated by hand, since not every window system does it.
class QtEscritorio : public ui::Escritorio, public ui::EntryMaker {
public:
    QtEscritorio();
    ~QtEscritorio() override;
    void open_with(const std::string& path) override;
    void busy(bool on) override;
    void progress_done() override;
    void later(std::function<void()> what) override;

    /// @return nullptr when the form is not open
    [[nodiscard]] FormWindow* window_of(const ui::Form& form) const;
    /// The window that has the keys.
    [[nodiscard]] FormWindow* top_window() const;

protected:
    ui::Answer on_message(const std::string& text, ui::Icon icon, ui::Buttons buttons,
                          const std::string& title) override;
    std::optional<std::string> on_ask_file(const ui::FileRequest& request) override;
    std::vector<std::string> on_ask_files(const ui::FileRequest& request) override;
    bool on_progress(const std::string& what, long done, long total) override;
    void on_open(ui::Form& form, bool modal) override;
    void on_close(ui::Form& form) override;
    void wait(ui::Form& form) override;

private:
    struct Open {
        ui::Form* form;
        FormWindow* window;
        int depth;                    ///< event loops running when it was opened
        QPointer<QEventLoop> waiting; ///< the loop of a modal show
    };
    struct Nested;
    /// The window of the form whose procedure opens something now, else the one that has the keys.
    [[nodiscard]] FormWindow* owner_window() const;
    [[nodiscard]] QStringList choose(const ui::FileRequest& request, Choose what);
    void activate_top();
    void purge();
    std::vector<Open> windows_;
    std::vector<Open> retired_;
    std::unique_ptr<ProgressBox> progress_;
    QObject context_; ///< queued calls die with it
    int depth_ = 0;
    bool busy_ = false;
};

} // namespace quorvel::qt
