#include "platform/ui/controls.h"
#include "platform/ui/form.h"
#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel::ui {

std::optional<Fecha> ctlCalendario::understand(const std::string& typed) const {
    return leer_fecha_corta(typed, anio(clock_ ? clock_->hoy() : RelojSistema().hoy()));
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
