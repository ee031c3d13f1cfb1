#include "platform/ui/controls.h"
#include "platform/ui/form.h"
#include "platform/ui/utf8.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

namespace quorvel::ui {

void TextBox::SetText(std::string text) {
    if (text == text_) return;
    text_ = std::move(text);
    selected_ = false;
    Changed();
    Change();
}

void TextBox::edit(std::string text) {
    edited_ = true;
    SetText(std::move(text));
    selected_ = false;
}

void TextBox::user_edit(std::string text) {
    if (locked_ || !Enabled()) return;
    form().atender([&] { edit(sin_controles(text)); }); // pasted tabs and line ends become blanks
}

void TextBox::SelectAll() {
    selected_ = true;
    Changed();
}

void TextBox::SetLocked(bool locked) {
    if (locked == locked_) return;
    locked_ = locked;
    Changed();
}

char32_t TextBox::filter(char32_t ch) {
    if (locked_ || ch < 32) return 0;
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
        const char32_t ch = filter(e.ch);
        if (ch != 0) edit((selected_ ? std::string() : text_) + utf8(ch));
        return;
    }
    if (e.key == Key::home || e.key == Key::end || e.key == Key::left || e.key == Key::right) {
        selected_ = false;
        e.handled = true;
        return;
    }
    if (e.key == Key::del) {
        e.handled = true;
        if (selected_ && !locked_) edit({});
        return;
    }
    int code = e.key == Key::tab || e.key == Key::backtab ? 0 : key_ascii(e);
    if (code == 0) return;
    KeyPress(code);
    e.handled = code == 0;
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
