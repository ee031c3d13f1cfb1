#include "platform/ui/entry.h"

#include <algorithm>

namespace quorvel::ui {

namespace {
bool within_character(const std::string& text, std::size_t i) {
    return i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
}
} // namespace

Entry entry_between(const std::string& before, const std::string& now) {
    std::size_t front = 0, back = 0;
    const std::size_t common = std::min(before.size(), now.size());
    while (front < common && before[front] == now[front]) ++front;
    while (front > 0 && within_character(now, front)) --front;
    while (back < common - front && before[before.size() - 1 - back] == now[now.size() - 1 - back]) ++back;
    while (back > 0 && within_character(now, now.size() - back)) --back;
    Entry e{now.substr(0, front), now.substr(front, now.size() - front - back),
            now.substr(now.size() - back)};
    const auto characters = std::count_if(
        e.text.begin(), e.text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
    e.typed = characters == 1;
    return e;
}

} // namespace quorvel::ui
