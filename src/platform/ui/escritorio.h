#pragma once
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
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
/// What a procedure opens and waits for (a modal form, a box, a file dialog, long work) belongs to the form
/// whose procedure it is, and ends with it: `call_off`.
class Escritorio {
public:
    Escritorio();
    virtual ~Escritorio();
    Escritorio(const Escritorio&) = delete;
    Escritorio& operator=(const Escritorio&) = delete;

    /// @param title shown above the text; the module's own is "Mensaje"
    /// @return what leaves the box when it is called off: no to a question
    Answer message(const std::string& text, Icon icon, Buttons buttons, const std::string& title = "Mensaje");
    /// @return nothing when cancelled or called off, or for a file of an open database, which the person is
    /// told
    [[nodiscard]] std::optional<std::string> ask_file(const FileRequest& request);
    /// The same for files to open, as many as the person picks.
    [[nodiscard]] std::vector<std::string> ask_files(const FileRequest& request);
    /// Opens a file with an application of the person's choice.
    virtual void open_with(const std::string& path) = 0;
    virtual void busy(bool on) = 0;
    /// Long work reports how far it is. @return false when the person cancels or it is called off
    bool progress(const std::string& what, long done, long total);
    virtual void progress_done() {}

    /// Called by Form: puts it on top, shows it; waits for its end when modal.
    void open(Form& form, bool modal);
    /// Called by Form: takes it away; activates the form below when it was the top.
    void close(Form& form);
    /// The person turns to an open form. Nothing while something waits for an answer.
    void bring_to_top(Form& form);
    [[nodiscard]] Form* top() const { return open_.empty() ? nullptr : open_.back(); }
    [[nodiscard]] const std::vector<Form*>& open_forms() const { return open_; }

    /// A procedure runs: of this form, or with nullptr the host's own code. Procedures nest.
    class Acting {
    public:
        Acting(Escritorio& escritorio, Form* form) : escritorio_(escritorio) {
            escritorio_.acting_.push_back(form);
        }
        ~Acting() { escritorio_.acting_.pop_back(); }
        Acting(const Acting&) = delete;
        Acting& operator=(const Acting&) = delete;

    private:
        Escritorio& escritorio_;
    };
    /// The form whose procedure runs now; nullptr when none does.
    [[nodiscard]] Form* acting() const { return acting_.empty() ? nullptr : acting_.back(); }
    /// Something waits for an answer: no screen may be shown beside it.
    [[nodiscard]] bool waiting() const { return !waits_.empty(); }
    /// A procedure of the form waits for an answer.
    [[nodiscard]] bool waiting_for(const Form& form) const;
    /// Ends what the form's procedures wait for, from the top down, each as if the person left it without a
    /// choice.
    void call_off(Form& form);
    /// Does it when the event under way has been dealt with entirely.
    virtual void later(std::function<void()> what) { what(); }
    /// Called by Form: it dies.
    void forget(Form& form);
    /// A form whose owner goes while its procedures run lives on until they have ended.
    void keep(std::unique_ptr<Form> form);
    /// Column widths that a person gave the list of a form, "80#200#", by the form's name.
    std::map<std::string, std::string> list_widths;

protected:
    virtual Answer on_message(const std::string& text, Icon icon, Buttons buttons,
                              const std::string& title) = 0;
    virtual std::optional<std::string> on_ask_file(const FileRequest& request) = 0;
    /// One file where the desktop offers no more.
    virtual std::vector<std::string> on_ask_files(const FileRequest& request);
    virtual bool on_progress(const std::string& what, long done, long total) = 0;
    virtual void on_open(Form&, bool modal) = 0;
    virtual void on_close(Form&) = 0;
    /// Returns when the form is no longer visible.
    virtual void wait(Form&) = 0;
    /// How the box or file dialog that begins to wait now is left without a choice.
    void on_call_off(std::function<void()> end) { waits_.back().end = std::move(end); }

private:
    struct Wait {
        Form *owner, *modal; ///< modal: the form that is waited for, if it is one
        std::size_t depth;   ///< procedures running when it began
        std::function<void()> end;
        bool off;
    };
    class Waiting;
    void put_on_top(Form& form, bool modal);
    std::vector<Form*> open_, acting_;
    std::vector<Wait> waits_;
    std::vector<std::unique_ptr<Form>> kept_;
};

} // namespace quorvel::ui
