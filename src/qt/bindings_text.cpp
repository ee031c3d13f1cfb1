#include "qt/DateBox.h"
#include "qt/bindings.h"
#include "qt/keys.h"
#include "qt/text.h"

#include <QClipboard>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <algorithm>

namespace quorvel::qt {

TextBinding::TextBinding(QWidget& shown, QLineEdit& edit, ui::TextBox& control)
    : Binding(shown, control), edit_(edit), box_(control) {
    watch(edit);
    edit.setAcceptDrops(false);
    // Keys, the clipboard, the middle button, dead keys: whatever changed the text ends here.
    connect(&edit, &QLineEdit::textChanged, this, [this] { edited(); });
    follow(control.AllSelected, [this] {
        if (edit_.hasFocus()) edit_.selectAll();
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
    if (edit_.text() != text && !entering_) {
        const QSignalBlocker block(edit_);
        const auto behind = edit_.text().size() - edit_.cursorPosition();
        edit_.setText(text);
        edit_.setCursorPosition(static_cast<int>(edit_.hasFocus() ? std::max(text.size() - behind, 0LL) : 0));
    }
    edit_.setReadOnly(box_.Locked());
    edit_.setAlignment((box_.RightAligned() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

void TextBinding::edited() {
    if (detached()) return;
    entering_ = true; // a refused text stays in sight while the message tells why
    box_.form().atender([this] { refused_ = !box_.user_edit(to_std(edit_.text())); });
    entering_ = false;
    pull();
}

bool TextBinding::key_pressed(QKeyEvent& event) {
    auto e = translate(event);
    if (!e) return false;
    if (!box_.has_focus() && !box_.SetFocus()) return true;
    const bool native = edits_natively(event);
    if (!native && !types_character(*e) && !event.matches(QKeySequence::Paste))
        return Binding::key_pressed(event);
    box_.form().atender(
        [&] { e->handled = (box_.KeyDown(*e), e->handled) || (native && !box_.takes_key(*e)); });
    if (e->handled || box_.Locked()) return e->handled || !native;
    if (native) return false;
    const bool pastes = event.matches(QKeySequence::Paste);
    insert(edit_,
           pastes ? QGuiApplication::clipboard()->text().trimmed().replace("\r\n", " ")
                  : QString::fromUcs4(&e->ch, 1),
           refused_);
    return true;
}

bool TextBinding::eventFilter(QObject* watched, QEvent* event) {
    if (detached()) return false;
    // A long text is read from its beginning once the caret is elsewhere.
    if (event->type() == QEvent::FocusOut) edit_.home(false);
    return Binding::eventFilter(watched, event);
}

TapeBinding::TapeBinding(QPlainTextEdit& edit, ui::TextBox& control)
    : Binding(edit, control), edit_(edit), box_(control) {
    watch(edit);
    edit.setReadOnly(true);
    edit.setTabChangesFocus(true);
}

void TapeBinding::pull_state() {
    const QString text = to_qt(box_.Text()).remove('\r').trimmed();
    if (edit_.toPlainText() == text) return;
    edit_.setPlainText(text);
    edit_.moveCursor(QTextCursor::End);
    edit_.ensureCursorVisible();
}

bool TapeBinding::key_pressed(QKeyEvent& event) {
    return !event.matches(QKeySequence::Copy) && !event.matches(QKeySequence::SelectAll) &&
           Binding::key_pressed(event);
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
