#include "qt/DateBox.h"
#include "qt/bindings.h"
#include "qt/keys.h"
#include "qt/text.h"

#include <QClipboard>
#include <QCursor>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

namespace quorvel::qt {

TextBinding::TextBinding(QWidget& shown, QLineEdit& edit, ui::TextBox& control)
    : Binding(shown, control), edit_(edit), box_(control) {
    watch(edit);
    edit.setAcceptDrops(false);
    connect(&edit, &QLineEdit::textChanged, this, [this] {
        if (!pulling_) edited();
    });
}

TextBinding::TextBinding(QLineEdit& edit, ui::TextBox& control) : TextBinding(edit, edit, control) {}

QWidget& TextBinding::focus_target() { return edit_; }

void TextBinding::focused() {
    pull();
    if (box_.all_selected()) edit_.selectAll();
}

void TextBinding::pull_state() {
    const QString text = to_qt(box_.Text());
    if (edit_.text() != text) {
        const QSignalBlocker block(edit_);
        edit_.setText(text);
        if (!edit_.hasFocus()) edit_.home(false);
    }
    edit_.setReadOnly(box_.Locked());
    edit_.setAlignment((box_.RightAligned() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

void TextBinding::edited() {
    pulling_ = true;
    box_.form().atender([this] { box_.user_edit(to_std(edit_.text())); });
    pulling_ = false;
    pull();
}

bool TextBinding::type(const QString& text) {
    if (box_.Locked()) return true;
    box_.form().atender([&] {
        pulling_ = true;
        const bool typed = insert_filtered(edit_, text, [this](char32_t ch) { return box_.filter(ch); });
        pulling_ = false;
        if (typed) edited();
    });
    pulling_ = false;
    return true;
}

bool TextBinding::key_pressed(QKeyEvent& event) {
    auto e = translate(event);
    if (!e) return false;
    if (!box_.has_focus() && !box_.SetFocus()) return true;
    const bool native = edits_natively(event);
    if (!native && !types_character(*e) && !event.matches(QKeySequence::Paste))
        return Binding::key_pressed(event);
    box_.form().atender([&] { box_.KeyDown(*e); });
    if (e->handled) return true;
    if (native) return false;
    if (event.matches(QKeySequence::Paste)) {
        QString text = QGuiApplication::clipboard()->text().trimmed();
        return type(text.replace("\r\n", " ").replace('\n', ' ').replace('\t', ' '));
    }
    return type(QString::fromUcs4(&e->ch, 1));
}

bool TextBinding::eventFilter(QObject* watched, QEvent* event) {
    if (detached()) return false;
    if (event->type() == QEvent::InputMethod) {
        // Dead keys arrive here; what they compose goes through the same rules as a typed character.
        const auto* input = static_cast<QInputMethodEvent*>(event);
        if (!input->commitString().isEmpty()) return type(input->commitString());
    }
    // A long text is read from its beginning once the caret is elsewhere.
    if (event->type() == QEvent::FocusOut) edit_.home(false);
    return Binding::eventFilter(watched, event);
}

DateBinding::DateBinding(DateBox& box, ui::ctlCalendario& control)
    : TextBinding(box, box.edit(), control), date_(box), calendar_(control) {
    connect(&box, &DateBox::opening, this, [this] { open_calendar(); });
    connect(&box, &DateBox::picked, this, [this](QDate date) {
        calendar_.form().atender([&] { calendar_.user_edit(to_std(date.toString("dd/MM/yyyy"))); });
        pull();
    });
}

void DateBinding::open_calendar() {
    if (calendar_.Locked() || !calendar_.SetFocus()) return;
    QDate shown = QDate::currentDate();
    if (const auto date = calendar_.date()) {
        shown = QDate(static_cast<int>(date->year()), static_cast<int>(static_cast<unsigned>(date->month())),
                      static_cast<int>(static_cast<unsigned>(date->day())));
    }
    date_.show_calendar(shown);
}

void DateBinding::pull_state() {
    TextBinding::pull_state();
    edit_.setPlaceholderText(QString());
    date_.set_pickable(!calendar_.Locked());
}

bool DateBinding::key_pressed(QKeyEvent& event) {
    if (event.key() == Qt::Key_Down && (event.modifiers() & Qt::AltModifier)) {
        open_calendar();
        return true;
    }
    return TextBinding::key_pressed(event);
}

} // namespace quorvel::qt
