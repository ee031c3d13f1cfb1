#include "platform/ui/controls.h"
#include "platform/ui/form.h"
#include "text/letras_utf8.h"

#include <cctype>

namespace quorvel::ui {

namespace {

/// Digit groups of "5/3/24"; a text of six or eight digits is cut into day, month and year.
std::vector<std::string> groups(const std::string& text) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == '/' || c == '-')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    const std::string& all = parts[0];
    if (parts.size() == 1 && (all.size() == 6 || all.size() == 8))
        return {all.substr(0, 2), all.substr(2, 2), all.substr(4)};
    return parts;
}

/// The date that a text means, its short forms included; two-digit years lie between 1950 and 2049.
std::optional<Fecha> understand(const std::string& typed) {
    auto parts = groups(recortar(typed));
    if (parts.size() != 3) return std::nullopt;
    for (const auto& p : parts) {
        if (p.empty()) return std::nullopt;
        for (const char c : p)
            if (std::isdigit(static_cast<unsigned char>(c)) == 0) return std::nullopt;
    }
    if (parts[0].size() > 2 || parts[1].size() > 2) return std::nullopt;
    if (parts[2].size() == 2) parts[2].insert(0, parts[2] < "50" ? "20" : "19");
    if (parts[2].size() != 4) return std::nullopt;
    for (const int i : {0, 1})
        if (parts[static_cast<std::size_t>(i)].size() == 1) parts[static_cast<std::size_t>(i)].insert(0, "0");
    return leer_fecha(parts[0] + "/" + parts[1] + "/" + parts[2]);
}

} // namespace

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
