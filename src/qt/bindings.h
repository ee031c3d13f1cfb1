#pragma once
#include "platform/ui/controls.h"
#include "platform/ui/ctlConsulta.h"
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/ctlRegistro.h"
#include "qt/Binding.h"

#include <QPoint>
#include <memory>

class QAbstractButton;
class QComboBox;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;

namespace quorvel::qt {

class ConsultaView;
class DateBox;
class GridView;
class RegistroBar;

/// TextBox and ctlEntrada on a QLineEdit.
class TextBinding : public Binding {
public:
    TextBinding(QLineEdit& edit, ui::TextBox& control);
    TextBinding(QWidget& shown, QLineEdit& edit, ui::TextBox& control);
    QWidget& focus_target() override;
    void focused() override;

protected:
    void pull_state() override;
    bool key_pressed(QKeyEvent& event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    QLineEdit& edit_;

private:
    void edited();
    ui::TextBox& box_;
    bool entering_ = false; ///< the box is looking at the text
    bool refused_ = false;  ///< what it made of the last one
};

/// TextBox on several lines, to be read and copied from: its last line is in sight.
class TapeBinding : public Binding {
public:
    TapeBinding(QPlainTextEdit& edit, ui::TextBox& control);

protected:
    void pull_state() override;
    bool key_pressed(QKeyEvent& event) override;

private:
    QPlainTextEdit& edit_;
    ui::TextBox& box_;
};

/// ctlCalendario on a DateBox: the text rules of a text box, and a calendar to pick from.
class DateBinding : public TextBinding {
public:
    DateBinding(DateBox& box, ui::ctlCalendario& control);

protected:
    void pull_state() override;
    bool key_pressed(QKeyEvent& event) override;

private:
    void open_calendar();
    DateBox& date_;
    ui::ctlCalendario& calendar_;
};

class ComboBinding : public Binding {
public:
    ComboBinding(QComboBox& combo, ui::ComboBox& control);

protected:
    void pull_state() override;
    bool key_pressed(QKeyEvent& event) override;

private:
    QComboBox& combo_;
    ui::ComboBox& list_;
};

class ListBinding : public Binding {
public:
    ListBinding(QListWidget& widget, ui::ListBox& control);

protected:
    void pull_state() override;

private:
    void offer_commands(QPoint at);
    QListWidget& widget_;
    ui::ListBox& list_;
};

class LabelBinding : public Binding {
public:
    LabelBinding(QLabel& label, ui::Label& control);

protected:
    void pull_state() override;

private:
    QLabel& label_;
    ui::Label& text_;
};

/// CommandButton, CheckBox and OptionButton.
template <class C> class ButtonBinding : public Binding {
public:
    ButtonBinding(QAbstractButton& button, C& control);

protected:
    void pull_state() override;

private:
    QAbstractButton& button_;
    C& model_;
};
extern template class ButtonBinding<ui::CommandButton>;
extern template class ButtonBinding<ui::CheckBox>;
extern template class ButtonBinding<ui::OptionButton>;

class GridBinding : public Binding {
public:
    GridBinding(GridView& view, ui::ctlPlanilla& grid);
    ~GridBinding() override;
    void detach() override;
    QWidget& focus_target() override;

protected:
    void pull_state() override;

private:
    GridView& view_;
};

class ConsultaBinding : public Binding {
public:
    ConsultaBinding(ConsultaView& view, ui::ctlConsulta& list);
    ~ConsultaBinding() override;
    void detach() override;

protected:
    void pull_state() override;

private:
    ConsultaView& view_;
};

class RegistroBinding : public Binding {
public:
    RegistroBinding(RegistroBar& bar, ui::ctlRegistro& control);

protected:
    void pull_state() override;

private:
    RegistroBar& bar_;
    ui::ctlRegistro& registro_;
};

} // namespace quorvel::qt
