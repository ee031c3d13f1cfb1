#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace quorvel::ui {

enum class Key {
    character,
    enter,
    tab,
    backtab,
    escape,
    backspace,
    del,
    up,
    down,
    left,
    right,
    home,
    end,
    page_up,
    page_down,
    insert,
    f1,
    f2,
    f3,
    f4,
    f5,
    f6,
    f7,
    f8,
    f9,
    f10,
    f11,
    f12
};

/// One key stroke; a handler sets `handled` to keep it from going further.
struct KeyEvent {
    Key key = Key::character;
    char32_t ch = 0; ///< the character of Key::character (the letter, for ctrl combinations)
    bool ctrl = false, shift = false, alt = false;
    bool keypad = false; ///< from the numeric pad: its decimal key types ","
    bool handled = false;
};

/// Reads a key's name: "ctrl+y", "enter", "escape", "tab", "shift+tab", "f5", "delete", "a".
[[nodiscard]] std::optional<KeyEvent> parse_key(std::string_view name);
/// Whether this is the key stroke of that name; an empty name is none.
[[nodiscard]] bool is_stroke(const KeyEvent& e, std::string_view name);
/// Code that KeyPress hands out: the character, 1 to 26 for ctrl+letter, 13 enter, 27 escape, 8 backspace,
/// 9 tab, 0 for keys that type nothing.
[[nodiscard]] int key_ascii(const KeyEvent& e);

} // namespace quorvel::ui
