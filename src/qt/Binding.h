#pragma once
#include "platform/ui/form.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <vector>

class QKeyEvent;
class QLabel;
class QWidget;

namespace quorvel::qt {

/// Keeps one widget and one control alike: the control's state is painted, what the person does is forwarded.
/// Holds no state of its own and decides nothing.
class Binding : public QObject {
public:
    Binding(QWidget& widget, ui::Control& control);
    ~Binding() override;

    [[nodiscard]] QWidget& widget() const { return *widget_; }
    [[nodiscard]] ui::Control& control() const { return control_; }
    /// What gets the keyboard when the control has the focus.
    [[nodiscard]] virtual QWidget& focus_target() { return *widget_; }
    /// The label that names this widget shares its visibility.
    void set_caption_label(QLabel* label);
    /// Paints the control's state.
    void pull();
    /// Lets go of the control, which may die now. The binding itself may be in the middle of an event and
    /// stays until the window goes.
    virtual void detach();
    /// The control has just got the focus.
    virtual void focused() {}

protected:
    /// Follows an event of the control for as long as the window lives.
    template <class E, class F> void follow(E& event, F f) { links_.push_back(event.connect(std::move(f))); }
    /// Keys and clicks of this widget go through the focus door and the key rules.
    void watch(QWidget& widget, bool door_on_press = true);
    virtual void pull_state() {}
    /// @return true when the widget must not see the key
    virtual bool key_pressed(QKeyEvent& event);
    bool eventFilter(QObject* watched, QEvent* event) override;
    [[nodiscard]] bool detached() const { return links_.empty(); }

private:
    QWidget* widget_;
    QString layout_tip_; ///< the layout's own tool tip, shown while the control has nothing to say
    ui::Control& control_;
    QPointer<QLabel> label_;
    std::vector<ui::Connection> links_;
    bool door_on_press_ = true;
};

} // namespace quorvel::qt
