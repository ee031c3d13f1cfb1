#include "platform/ui/controls.h"
#include "platform/ui/form.h"
#include "platform/ui/utf8.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

namespace quorvel::ui {

void TextBox::SetText(std::string text) {
    if (text == text_) return;
    text_ = std::move(text);
    const bool untouched = has_focus() && !edited_;
    selected_ = false;
    Changed();
    if (untouched) SelectAll();
    Change();
}

void TextBox::edit(std::string text) {
    edited_ = true;
    SetText(std::move(text));
    selected_ = false;
}

/// The one door of what a person enters.
bool TextBox::enter(Entry e) {
    if (locked_ || !Enabled()) return false;
    form().atender([&] {
        if (e.text.empty()) return edit(e.whole()); // something was taken out
        if (!e.typed) settle(e);
        if (!e.refused && !e.settled) {
            std::string kept;
            for (const char32_t ch : code_points(sin_controles(e.text)))
                if (const char32_t k = filter(ch)) kept += utf8(k);
            e.refused = kept.empty();
            e.text = kept;
        }
        e.refused ? Changed() : edit(e.whole());
    });
    return !e.refused;
}

bool TextBox::user_edit(const std::string& text) {
    selected_ = false;
    return text == text_ || enter(entry_between(text_, text));
}

bool TextBox::paste(const std::string& text) { return enter({selected_ ? std::string() : text_, text, {}}); }

void TextBox::SelectAll() {
    selected_ = true;
    Changed();
    AllSelected();
}

void TextBox::SetLocked(bool locked) {
    if (locked == locked_) return;
    locked_ = locked;
    Changed();
}

bool TextBox::takes_key(const KeyEvent& e) {
    int code = e.key == Key::tab || e.key == Key::backtab ? 0 : key_ascii(e);
    if (code == 0) return true;
    KeyPress(code);
    return code != 0;
}

char32_t TextBox::filter(char32_t ch) {
    if (ch < 32) return 0;
    int code = static_cast<int>(ch);
    KeyPress(code);
    if (code < 32) return 0;
    ch = static_cast<char32_t>(code);
    if (!accepts(ch)) return 0;
    return upper_ ? code_points(mayusculas(utf8(ch))).at(0) : ch;
}

void TextBox::on_key(KeyEvent& e) {
    if (e.key == Key::character && !e.ctrl && !e.alt) {
        e.handled = true;
        enter({selected_ ? std::string() : text_, utf8(e.ch), {}, true});
        return;
    }
    if (e.key == Key::home || e.key == Key::end || e.key == Key::left || e.key == Key::right) {
        selected_ = false;
        e.handled = true;
        return;
    }
    if (e.key == Key::del && !(e.ctrl && e.shift)) {
        e.handled = true;
        if (selected_ && !locked_) edit({});
        return;
    }
    e.handled = !takes_key(e);
    if (e.key == Key::backspace && !e.handled) {
        e.handled = true;
        if (locked_) return;
        std::string rest = selected_ ? std::string() : text_;
        drop_last(rest);
        edit(std::move(rest));
    } else if (e.ctrl && !e.shift && e.ch == U'a' && !e.handled) {
        e.handled = true;
        SelectAll();
    }
}

void TextBox::on_enter() {
    on_entry_ = text_;
    edited_ = false;
    SelectAll();
}

bool TextBox::on_leave() {
    bool cancel = false;
    if (edited_ && text_ != on_entry_) LeftChanged(cancel);
    if (cancel) return false;
    on_entry_ = text_;
    edited_ = false;
    return true;
}

double ctlEntrada::Value() const { return valnumeroformato(Text()); }

} // namespace quorvel::ui
