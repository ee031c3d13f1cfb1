#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvel::ui {

class Form;

enum class Icon { critical, warning, information, question };
enum class Buttons { ok, yes_no };
enum class Answer { ok, yes, no, cancel };

struct FileRequest {
    std::string title, filter, name; ///< filter "*.csv"; name: proposed file name
    bool save = false;               ///< a save dialog asks before overwriting
};

/// The one service through which forms reach the person. It owns the order of open forms; what is on top gets
/// the keys, and a form that comes back to the top is activated.
class Escritorio {
public:
    virtual ~Escritorio() = default;
    /// @param title shown above the text; the module's own is "Mensaje"
    virtual Answer message(const std::string& text, Icon icon, Buttons buttons,
                           const std::string& title = "Mensaje") = 0;
    /// @return nothing when cancelled, or for a file of an open database, which the person is told
    [[nodiscard]] std::optional<std::string> ask_file(const FileRequest& request);
    /// Opens a file with an application of the person's choice.
    virtual void open_with(const std::string& path) = 0;
    virtual void busy(bool on) = 0;
    /// Long work reports how far it is. @return false when the person cancels
    virtual bool progress(const std::string& what, long done, long total) = 0;
    virtual void progress_done() {}

    /// Called by Form: puts it on top, shows it; waits for its end when modal.
    void open(Form& form, bool modal);
    /// Called by Form: takes it away; activates the form below when it was the top.
    void close(Form& form);
    [[nodiscard]] Form* top() const { return open_.empty() ? nullptr : open_.back(); }
    [[nodiscard]] const std::vector<Form*>& open_forms() const { return open_; }

protected:
    /// @return nothing when cancelled
    virtual std::optional<std::string> choose_file(const FileRequest& request) = 0;
    virtual void on_open(Form&, bool modal) = 0;
    virtual void on_close(Form&) = 0;
    /// Returns when the form is no longer visible.
    virtual void wait(Form&) = 0;

private:
    std::vector<Form*> open_;
};

} // namespace quorvel::ui
