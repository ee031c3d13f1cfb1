#include "platform/ui/controls.h"
#include "platform/ui/form.h"
#include "text/letras_utf8.h"

#include <algorithm>
#include <cctype>

namespace quorvel::ui {

namespace {

/// Digit groups of "5/3/24"; a text of four, six or eight digits is cut into day, month and year.
std::vector<std::string> groups(const std::string& text) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == '/' || c == '-')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    const std::string& all = parts[0];
    if (parts.size() == 1 && (all.size() == 4 || all.size() == 6 || all.size() == 8))
        parts = {all.substr(0, 2), all.substr(2, 2), all.substr(4)};
    if (parts.size() == 2) parts.emplace_back();
    return parts;
}

bool digits(const std::string& text, std::size_t most) {
    return !text.empty() && text.size() <= most &&
           std::ranges::all_of(text, [](unsigned char c) { return std::isdigit(c) != 0; });
}

} // namespace

/// Two-digit years lie between 1950 and 2049.
std::optional<Fecha> ctlCalendario::understand(const std::string& typed) const {
    auto parts = groups(recortar(typed));
    if (parts.size() != 3) return std::nullopt;
    if (parts[0].size() == 4) std::swap(parts[0], parts[2]); // "2024-03-05" of a spreadsheet
    const std::string &day = parts[0], &month = parts[1];
    std::string& year = parts[2];
    if (year.empty()) year = std::to_string(anio(clock_ ? clock_->hoy() : RelojSistema().hoy()));
    if (!digits(day, 2) || !digits(month, 2) || !digits(year, 4)) return std::nullopt;
    if (year.size() == 2) year.insert(0, year < "50" ? "20" : "19");
    return leer_fecha(day + "/" + month + "/" + year);
}

std::optional<Fecha> ctlCalendario::date() const { return understand(Text()); }

void ctlCalendario::SetDate(std::optional<Fecha> f) { SetText(f ? fecha_dmy(*f) : std::string()); }

std::string ctlCalendario::Year() const {
    const auto f = date();
    return f ? std::to_string(anio(*f)) : std::string();
}

std::string ctlCalendario::Month() const {
    const auto f = date();
    return f ? std::to_string(mes(*f)) : std::string();
}

std::string ctlCalendario::Day() const {
    const auto f = date();
    return f ? std::to_string(dia(*f)) : std::string();
}

std::string ctlCalendario::MonthDayYear() const {
    const auto f = date();
    return f ? fecha_mdy(*f) : std::string();
}

bool ctlCalendario::accepts(char32_t ch) const {
    return (ch >= U'0' && ch <= U'9') || ch == U'/' || ch == U'-';
}

/// A date in another spelling comes in as one; a text with anything else in it does not.
void ctlCalendario::settle(Entry& e) {
    std::string text = recortar(reemplazar(e.whole(), ".", "/"));
    text.resize(std::min(text.find(' '), text.size())); // a time of day
    const bool strange =
        !std::ranges::all_of(text, [this](char c) { return accepts(static_cast<unsigned char>(c)); });
    e.settled = true;
    e.refused = strange;
    if (strange) return form().critico("Fecha no válida");
    const auto date = understand(text);
    e.front = e.back = "";
    e.text = date ? fecha_dmy(*date) : text;
}

bool ctlCalendario::on_leave() {
    const auto f = date();
    if (f) SetText(fecha_dmy(*f));
    if (!f && refuses_ && !recortar(Text()).empty()) {
        form().critico("Fecha no válida");
        return false;
    }
    return TextBox::on_leave();
}

} // namespace quorvel::ui
