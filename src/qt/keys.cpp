#include "qt/keys.h"

#include "qt/text.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <algorithm>
#include <map>

namespace quorvel::qt {

namespace {

using ui::Key;

const std::map<int, Key>& named_keys() {
    static const std::map<int, Key> keys{
        {Qt::Key_Return, Key::enter},    {Qt::Key_Enter, Key::enter},    {Qt::Key_Tab, Key::tab},
        {Qt::Key_Backtab, Key::backtab}, {Qt::Key_Escape, Key::escape},  {Qt::Key_Backspace, Key::backspace},
        {Qt::Key_Delete, Key::del},      {Qt::Key_Up, Key::up},          {Qt::Key_Down, Key::down},
        {Qt::Key_Left, Key::left},       {Qt::Key_Right, Key::right},    {Qt::Key_Home, Key::home},
        {Qt::Key_End, Key::end},         {Qt::Key_PageUp, Key::page_up}, {Qt::Key_PageDown, Key::page_down},
        {Qt::Key_Insert, Key::insert},   {Qt::Key_F1, Key::f1},          {Qt::Key_F2, Key::f2},
        {Qt::Key_F3, Key::f3},           {Qt::Key_F4, Key::f4},          {Qt::Key_F5, Key::f5},
        {Qt::Key_F6, Key::f6},           {Qt::Key_F7, Key::f7},          {Qt::Key_F8, Key::f8},
        {Qt::Key_F9, Key::f9},           {Qt::Key_F10, Key::f10},        {Qt::Key_F11, Key::f11},
        {Qt::Key_F12, Key::f12},
    };
    return keys;
}

/// With Ctrl the event's text is a control code, so the letter comes from the key itself.
char32_t character_of(const QKeyEvent& event) {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) {
        const int key = event.key();
        if (key >= Qt::Key_A && key <= Qt::Key_Z) return static_cast<char32_t>(key - Qt::Key_A + 'a');
        return key >= 0x20 && key < 0x1000000 ? static_cast<char32_t>(key) : 0;
    }
    const auto text = event.text().toUcs4();
    return text.size() == 1 && text[0] >= 0x20 && text[0] != 0x7f ? text[0] : 0;
}

} // namespace

std::optional<ui::KeyEvent> translate(const QKeyEvent& event) {
    ui::KeyEvent e;
    const auto modifiers = event.modifiers();
    // AltGr reports Ctrl+Alt on some systems although it types a character.
    const bool altgr = (modifiers & Qt::ControlModifier) && (modifiers & Qt::AltModifier) &&
                       !event.text().isEmpty() && event.text()[0].isPrint();
    e.ctrl = !altgr && (modifiers & Qt::ControlModifier);
    e.alt = !altgr && (modifiers & Qt::AltModifier);
    e.shift = modifiers & Qt::ShiftModifier;
    e.keypad = modifiers & Qt::KeypadModifier;
    if (const auto it = named_keys().find(event.key()); it != named_keys().end()) {
        e.key = it->second;
        if (e.key == Key::tab && e.shift) e.key = Key::backtab;
        return e;
    }
    e.ch = altgr ? event.text().toUcs4().value(0) : character_of(event);
    if (e.ch == 0) return std::nullopt;
    if (e.keypad && (e.ch == '.' || e.ch == ',')) e.ch = ',';
    return e;
}

bool edits_natively(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Paste)) return false;
    // Redo is left out: its Ctrl+Y is the lookup key.
    for (const auto standard :
         {QKeySequence::Copy, QKeySequence::Cut, QKeySequence::Undo, QKeySequence::SelectAll}) {
        if (event.matches(standard)) return true;
    }
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Backspace: return true;
    case Qt::Key_Delete:
        return event.modifiers() != (Qt::ControlModifier | Qt::ShiftModifier); // that one is a command
    default: return false;
    }
}

bool types_character(const ui::KeyEvent& e) { return e.key == Key::character && !e.ctrl && !e.alt; }

void insert(QLineEdit& edit, const QString& text, const bool& refused) {
    const int start = edit.selectionStart();
    const auto length = edit.selectedText().size();
    const QPointer<QLineEdit> alive(&edit);
    edit.insert(text);
    if (alive && refused && length > 0) edit.setSelection(start, static_cast<int>(length));
}

void claim_before_shortcuts(QKeyEvent& event, const QWidget& widget) {
    if (event.modifiers() & Qt::AltModifier) return;
    const QKeySequence stroke(event.keyCombination());
    const auto actions = widget.window()->findChildren<QAction*>();
    const bool of_the_host = std::any_of(actions.begin(), actions.end(),
                                         [&](const QAction* a) { return a->shortcut() == stroke; });
    if (!of_the_host) event.accept();
}

QString shortcut_text(const std::string& shortcut) {
    QStringList parts;
    for (const QString& part : to_qt(shortcut).split('+', Qt::SkipEmptyParts)) {
        if (part == "ctrl")
            parts << "Ctrl";
        else if (part == "shift")
            parts << QString::fromUtf8("Mayús");
        else if (part == "alt")
            parts << "Alt";
        else if (part == "delete")
            parts << "Supr";
        else
            parts << part.left(1).toUpper() + part.mid(1);
    }
    return parts.join('+');
}

} // namespace quorvel::qt
