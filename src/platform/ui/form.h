#pragma once
#include "platform/ui/control.h"
#include "platform/ui/escritorio.h"

#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvel::ui {

/// What is asked for cannot be done now; nothing has changed.
class Busy : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A window without drawing: its controls by name, its focus, its life (load, show, activate, hide, unload).
class Form {
public:
    Form(Escritorio& escritorio, std::string name, std::string caption);
    virtual ~Form(); ///< leaves the desktop; the unload step is the owner's to run before
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] const std::string& Caption() const { return caption_; }
    void SetCaption(std::string caption);
    [[nodiscard]] Escritorio& escritorio() const { return escritorio_; }

    /// Runs the load step once until the form is unloaded.
    void Load();
    [[nodiscard]] bool loaded() const { return loaded_; }
    /// Loads, shows without waiting, activates. @throws Busy
    void Show();
    /// Loads, shows and returns when the form is hidden or unloaded. @throws Busy
    void ShowModal();
    /// A form is not shown beside what waits for an answer, unless it waits on top of that itself, and not
    /// modally while it is shown. @throws Busy
    void require_showable(bool modal) const;
    /// Ends a modal show and keeps the fields.
    void Hide();
    /// Runs the unload step when loaded, hides. Nothing when not loaded. For the form's own procedures and
    /// where none of them runs.
    void Unload();
    /// The same for whoever comes from outside, at any time. A form whose procedures run cannot go under
    /// them: what they wait for is called off, and it unloads when the last one has ended.
    /// @return false when that is still to come
    bool dismiss();
    /// Its procedures run, or wait for an answer.
    [[nodiscard]] bool running() const { return *depth_ > 0; }
    /// Somebody on the stack still uses it: one of its procedures, or whoever shows it modally.
    [[nodiscard]] bool in_use() const { return running() || modal_shows_ > 0; }
    /// Its running procedures get no more answers.
    [[nodiscard]] bool closing() const { return closing_; }
    /// It was loaded and unloaded: what it holds is left over.
    [[nodiscard]] bool spent() const { return spent_; }
    [[nodiscard]] bool visible() const { return visible_; }
    /// The person closes the window: Form_QueryClose, which unloads unless a form says otherwise.
    void close_by_user();
    /// Whether the window takes files that a person drops on it.
    [[nodiscard]] virtual bool takes_files() const { return false; }
    /// The person drops a file on the window.
    void drop_file(const std::string& path);
    /// The form has become the top one (shown, or what covered it closed).
    void activate();
    /// Called by Escritorio: leaves without a choice, with all that its own procedures wait for.
    void call_off();

    [[nodiscard]] const std::vector<Control*>& controls() const { return controls_; }
    /// By name without regard to case; nullptr when there is none.
    [[nodiscard]] Control* find(std::string_view name) const;
    [[nodiscard]] Control* active_control() const { return active_; }
    /// The focus door: the old control may refuse before the new one gets the focus.
    bool set_active(Control* control);
    /// Runs what leaving the focused control runs, and keeps the focus. @return false when it refuses.
    bool commit_active();
    /// What a menu entry or the toolbar does first: leaves a text box, keeps a grid's edit open.
    bool leave_for_command();
    /// @param enter only to controls at which Enter stops
    void focus_next(bool backwards = false, bool enter = false);
    /// A key to what has the focus, then the form's own keys (menu shortcuts, toolbar keys).
    void send_key(KeyEvent& e);

    /// The only catch of a form's events: shows the error's own description, critical, "Mensaje".
    template <class F> void atender(F&& evento) {
        const std::shared_ptr<int> depth = depth_; // the event may end the form
        const Escritorio::Acting acting(escritorio_, this);
        ++*depth;
        try {
            evento();
        } catch (const std::exception& e) {
            critico(e.what());
        }
        if (--*depth == 0 && depth.use_count() > 1) settle();
    }
    // Message boxes, all titled "Mensaje".
    void critico(const std::string& texto);
    void exclamacion(const std::string& texto);
    void informacion(const std::string& texto);
    [[nodiscard]] bool pregunta(const std::string& texto); ///< Yes and No; true for Yes

    Event<> Changed, FocusMoved, Closed;
    Event<> Settled; ///< an event of the person or the host has been dealt with, whatever it caused included

protected:
    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_Unload() {}
    virtual void Form_QueryClose() { Unload(); }
    virtual void Form_FileDropped(const std::string&) {}
    virtual void Form_KeyDown(KeyEvent&) {} ///< keys that the focused control did not handle

private:
    friend class Control;
    void adopt(Control* control);
    void abandon(Control* control);
    bool leave_active();
    bool change_active(Control* control);
    void settle();
    Escritorio& escritorio_;
    std::string name_, caption_;
    std::vector<Control*> controls_;
    Control *active_ = nullptr, *goal_ = nullptr;
    std::shared_ptr<int> depth_ = std::make_shared<int>(0); ///< events within events
    bool loaded_ = false, visible_ = false, moving_focus_ = false;
    int modal_shows_ = 0;
    bool closing_ = false, unload_wanted_ = false, spent_ = false;
};

} // namespace quorvel::ui
