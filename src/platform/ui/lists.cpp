#include "platform/ui/controls.h"
#include "platform/ui/form.h"
#include "platform/ui/utf8.h"
#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel::ui {

void ListControl::AddItem(std::string text, std::int64_t item_data) {
    items_.push_back({std::move(text), item_data});
    Changed();
}

void ListControl::RemoveItem(int index) {
    if (index < 0 || index >= ListCount()) return;
    items_.erase(items_.begin() + index);
    if (index_ == index) index_ = -1;
    if (index_ > index) --index_;
    Changed();
}

void ListControl::Clear() {
    items_.clear();
    index_ = -1;
    Changed();
}

const std::string& ListControl::List(int index) const {
    return items_.at(static_cast<std::size_t>(index)).text;
}

std::int64_t ListControl::ItemData(int index) const {
    return items_.at(static_cast<std::size_t>(index)).data;
}

void ListControl::SetListIndex(int index) {
    index_ = index >= 0 && index < ListCount() ? index : -1;
    Changed();
    if (index_ >= 0) Click();
}

bool ListControl::choose(int index) {
    if (index < 0 || index >= ListCount() || !can_focus() || !SetFocus()) return false;
    form().atender([&] {
        SetListIndex(index);
        Chosen();
    });
    return true;
}

std::string ListControl::Text() const { return index_ < 0 ? std::string() : List(index_); }

bool ListControl::select_text(std::string_view text) {
    const auto it = std::find_if(items_.begin(), items_.end(), [&](const Item& i) { return i.text == text; });
    if (it == items_.end()) return false;
    SetListIndex(static_cast<int>(it - items_.begin()));
    return true;
}

int ListControl::find_typed(int from) const {
    const std::string wanted = sin_acentos(typed_);
    const int n = ListCount();
    for (const bool by_name : {false, true}) // "33 Factura" is found by "33" before it is found by "fac"
        for (int step = 0; step < n; ++step) {
            const int i = (from + step) % n;
            std::string entry = sin_acentos(List(i));
            if (by_name) {
                const auto blank = entry.find(' ');
                if (blank == std::string::npos) continue;
                entry.erase(0, blank + 1);
            }
            if (entry.starts_with(wanted)) return i;
        }
    return -1;
}

void ListControl::type(char32_t ch) {
    bool begins = typed_.empty();
    typed_ += utf8(ch);
    int found = find_typed(0);
    if (found < 0) { // a new word begins, or the same letter asks for the next entry
        typed_ = utf8(ch);
        begins = true;
        found = ListCount() == 0 ? -1 : find_typed((std::max(index_, 0) + 1) % ListCount());
    }
    // Typed anew the selected entry is chosen again; the letters that follow lead nowhere else.
    if (found >= 0 && (found != index_ || begins)) SetListIndex(found);
}

void ListControl::on_key(KeyEvent& e) {
    if (e.ctrl || e.alt) return;
    if (e.key == Key::character) {
        e.handled = true;
        type(e.ch);
        return;
    }
    typed_.clear();
    int to = index_;
    switch (e.key) {
    case Key::up: to = index_ - 1; break;
    case Key::down: to = index_ + 1; break;
    case Key::home: to = 0; break;
    case Key::end: to = ListCount() - 1; break;
    case Key::page_up: to = index_ - 10; break;
    case Key::page_down: to = index_ + 10; break;
    default: return;
    }
    e.handled = true;
    to = std::clamp(to, 0, std::max(ListCount() - 1, 0));
    if (to != index_ && to < ListCount()) SetListIndex(to);
}

bool ListBox::double_click() {
    if (!can_focus() || ListIndex() < 0 || !SetFocus()) return false;
    form().atender([this] { DblClick(); });
    return true;
}

} // namespace quorvel::ui
