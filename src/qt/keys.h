#pragma once
#include "platform/ui/keys.h"

#include <optional>
#include <string>

class QKeyEvent;
class QLineEdit;
class QString;
class QWidget;

namespace quorvel::qt {

/// A key stroke as the control models know it; nothing for keys that only modify (Shift, dead keys).
std::optional<ui::KeyEvent> translate(const QKeyEvent& event);
/// True for what a line edit does itself: caret, selection, clipboard except paste, undo, deleting.
bool edits_natively(const QKeyEvent& event);
/// True when the key types its character into an edit.
bool types_character(const ui::KeyEvent& e);

/// Accepts a ShortcutOverride: the stroke is the form's, but for Alt, which opens the menus, and for the keys
/// of menus that the host has added to the window.
void claim_before_shortcuts(QKeyEvent& event, const QWidget& widget);

/// Inserts in place of what is selected. @param refused whether the rules kept the text as it was: then the
/// selection is kept, too
void insert(QLineEdit& edit, const QString& text, const bool& refused);

/// "ctrl+f5" as people read it: "Ctrl+F5".
QString shortcut_text(const std::string& shortcut);

} // namespace quorvel::qt
