#include "qt/bindings.h"
#include "qt/keys.h"
#include "qt/text.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QSignalBlocker>

namespace quorvel::qt {

namespace {

/// Captions are the system's own words: an ampersand in one is a letter, not a mnemonic.
QString button_text(const std::string& caption) { return to_qt(caption).replace('&', "&&"); }

} // namespace

ComboBinding::ComboBinding(QComboBox& combo, ui::ComboBox& control)
    : Binding(combo, control), combo_(combo), list_(control) {
    watch(combo);
    combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(&combo, &QComboBox::activated, this, [this](int index) {
        list_.form().atender([&] { list_.choose(index); });
        pull();
    });
}

void ComboBinding::pull_state() {
    const QSignalBlocker block(combo_);
    const int count = list_.ListCount();
    while (combo_.count() > count) combo_.removeItem(combo_.count() - 1);
    for (int i = 0; i < count; ++i) {
        const QString text = to_qt(list_.List(i));
        if (i >= combo_.count())
            combo_.addItem(text);
        else if (combo_.itemText(i) != text)
            combo_.setItemText(i, text);
    }
    combo_.setCurrentIndex(list_.ListIndex());
    // A name longer than the box is still readable when the pointer rests on it.
    if (list_.ToolTip().empty()) combo_.setToolTip(to_qt(list_.Text()).trimmed());
}

bool ComboBinding::key_pressed(QKeyEvent& event) {
    const bool opens = event.key() == Qt::Key_Down && (event.modifiers() & Qt::AltModifier);
    if (!opens) return Binding::key_pressed(event);
    if (list_.has_focus() || list_.SetFocus()) combo_.showPopup();
    return true;
}

ListBinding::ListBinding(QListWidget& widget, ui::ListBox& control)
    : Binding(widget, control), widget_(widget), list_(control) {
    watch(widget);
    connect(&widget, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        list_.form().atender([&] { list_.SetListIndex(widget_.row(item)); });
    });
    widget.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&widget, &QListWidget::customContextMenuRequested, this,
            [this](QPoint at) { offer_commands(at); });
    connect(&widget, &QListWidget::itemDoubleClicked, this,
            [this] { list_.form().atender([this] { list_.DblClick(); }); });
}

void ListBinding::offer_commands(QPoint at) {
    if (detached() || list_.ListIndex() < 0 || list_.commands().empty()) return;
    auto* menu = new QMenu(&widget_);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const ui::Command& command : list_.commands())
        menu->addAction(to_qt(command.caption) + '\t' + shortcut_text(command.shortcut), this, command.run);
    menu->popup(widget_.viewport()->mapToGlobal(at));
}

void ListBinding::pull_state() {
    const QSignalBlocker block(widget_);
    const int count = list_.ListCount();
    while (widget_.count() > count) delete widget_.takeItem(widget_.count() - 1);
    for (int i = 0; i < count; ++i) {
        const QString text = to_qt(list_.List(i));
        if (i >= widget_.count())
            widget_.addItem(text);
        else if (widget_.item(i)->text() != text)
            widget_.item(i)->setText(text);
    }
    widget_.setCurrentRow(list_.ListIndex());
}

LabelBinding::LabelBinding(QLabel& label, ui::Label& control)
    : Binding(label, control), label_(label), text_(control) {
    label.setTextFormat(Qt::PlainText);
}

void LabelBinding::pull_state() {
    label_.setText(to_qt(text_.Caption()));
    if (text_.ToolTip().empty()) label_.setToolTip(to_qt(text_.Caption()));
}

template <class C>
ButtonBinding<C>::ButtonBinding(QAbstractButton& button, C& control)
    : Binding(button, control), button_(button), model_(control) {
    watch(button, false); // pressing asks the focus door itself
    button.setAutoExclusive(false);
    connect(&button, &QAbstractButton::clicked, this, [this] {
        model_.form().atender([this] { model_.press(); });
        pull();
    });
}

template <class C> void ButtonBinding<C>::pull_state() {
    if (!model_.Caption().empty()) button_.setText(button_text(model_.Caption()));
    if constexpr (requires { model_.Value(); }) {
        const QSignalBlocker block(button_);
        button_.setChecked(model_.Value() != 0);
    }
}

template class ButtonBinding<ui::CommandButton>;
template class ButtonBinding<ui::CheckBox>;
template class ButtonBinding<ui::OptionButton>;

} // namespace quorvel::qt
