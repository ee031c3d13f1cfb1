#include "platform/ui/keys.h"

#include "platform/ui/utf8.h"
#include "text/letras_utf8.h"

#include <utility>

namespace quorvel::ui {

namespace {

constexpr std::pair<std::string_view, Key> NAMES[] = {{"enter", Key::enter},
                                                      {"return", Key::enter},
                                                      {"tab", Key::tab},
                                                      {"backtab", Key::backtab},
                                                      {"escape", Key::escape},
                                                      {"esc", Key::escape},
                                                      {"backspace", Key::backspace},
                                                      {"delete", Key::del},
                                                      {"del", Key::del},
                                                      {"up", Key::up},
                                                      {"down", Key::down},
                                                      {"left", Key::left},
                                                      {"right", Key::right},
                                                      {"home", Key::home},
                                                      {"end", Key::end},
                                                      {"pageup", Key::page_up},
                                                      {"page_up", Key::page_up},
                                                      {"pagedown", Key::page_down},
                                                      {"page_down", Key::page_down},
                                                      {"insert", Key::insert},
                                                      {"f1", Key::f1},
                                                      {"f2", Key::f2},
                                                      {"f3", Key::f3},
                                                      {"f4", Key::f4},
                                                      {"f5", Key::f5},
                                                      {"f6", Key::f6},
                                                      {"f7", Key::f7},
                                                      {"f8", Key::f8},
                                                      {"f9", Key::f9},
                                                      {"f10", Key::f10},
                                                      {"f11", Key::f11},
                                                      {"f12", Key::f12}};

/// Takes "ctrl+", "shift+" … off the front of a key's name.
bool take_modifier(std::string_view& name, KeyEvent& e) {
    const std::pair<std::string_view, bool KeyEvent::*> modifiers[] = {
        {"ctrl+", &KeyEvent::ctrl}, {"shift+", &KeyEvent::shift}, {"alt+", &KeyEvent::alt}};
    for (const auto& [text, flag] : modifiers) {
        if (name.size() <= text.size() || !igual_sin_caso(name.substr(0, text.size()), text)) continue;
        e.*flag = true;
        name.remove_prefix(text.size());
        return true;
    }
    return false;
}

} // namespace

std::optional<KeyEvent> parse_key(std::string_view name) {
    KeyEvent e;
    while (take_modifier(name, e)) {
    }
    for (const auto& [text, key] : NAMES) {
        if (!igual_sin_caso(name, text)) continue;
        e.key = key == Key::tab && e.shift ? Key::backtab : key;
        return e;
    }
    if (igual_sin_caso(name, "space")) name = " ";
    const std::u32string points = code_points(name);
    if (points.size() != 1 || points[0] < 32) return std::nullopt;
    e.ch = points[0];
    if (e.ctrl || e.alt) e.ch = code_points(minusculas(name))[0];
    return e;
}

bool is_stroke(const KeyEvent& e, std::string_view name) {
    if (name.empty()) return false;
    const auto wanted = parse_key(name);
    return wanted && wanted->key == e.key && wanted->ctrl == e.ctrl && wanted->alt == e.alt &&
           wanted->shift == e.shift && (e.key != Key::character || wanted->ch == e.ch);
}

int key_ascii(const KeyEvent& e) {
    switch (e.key) {
    case Key::character:
        if (e.alt) return 0;
        if (!e.ctrl) return static_cast<int>(e.ch);
        if (e.ch >= U'a' && e.ch <= U'z') return static_cast<int>(e.ch - U'a') + 1;
        if (e.ch >= U'A' && e.ch <= U'Z') return static_cast<int>(e.ch - U'A') + 1;
        return 0;
    case Key::enter: return 13;
    case Key::escape: return 27;
    case Key::backspace: return 8;
    case Key::tab:
    case Key::backtab: return 9;
    default: return 0;
    }
}

} // namespace quorvel::ui
