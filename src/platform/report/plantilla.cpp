#include "platform/report/plantilla.h"

#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>

namespace quorvel::report {

namespace {
constexpr std::array FORMATOS{"0",       "00",       "000000",   "0.0",          "0.00",       "#,##0",
                              "#,##0.0", "#,##0.00", "#,##0.##", "#,##0.######", "dd/mm/yyyy", "largo"};
constexpr std::array MESES{"enero", "febrero", "marzo",      "abril",   "mayo",      "junio",
                           "julio", "agosto",  "septiembre", "octubre", "noviembre", "diciembre"};

bool es_nombre(std::string_view s) {
    return !s.empty() && std::all_of(s.begin(), s.end(), [](char c) {
        return c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
               (static_cast<signed char>(c) < 0);
    });
}
} // namespace

int Data::column(std::string_view name) const {
    const auto it =
        std::find_if(columns.begin(), columns.end(), [&](const auto& c) { return c.name == name; });
    return it == columns.end() ? -1 : static_cast<int>(it - columns.begin());
}

bool known_format(std::string_view format) {
    return std::find(FORMATOS.begin(), FORMATOS.end(), format) != FORMATOS.end();
}

std::string show(const Value& v, ColumnKind kind, std::string_view format) {
    if (v.null()) return {};
    const bool fecha =
        format == "dd/mm/yyyy" || format == "largo" || (kind == ColumnKind::date && format.empty());
    if (fecha) {
        const auto f = v.date();
        if (!f) return v.text();
        if (format != "largo") return fecha_dmy(*f);
        return std::to_string(dia(*f)) + " de " + MESES.at(static_cast<std::size_t>(mes(*f) - 1)) + " de " +
               std::to_string(anio(*f));
    }
    return format.empty() ? recortar_fin(v.text()) : formato(v.number(), format);
}

Template::Piece Template::parse_piece(std::string_view inside) {
    const auto colon = inside.find(':');
    Piece p{Kind::field, minusculas(recortar(inside.substr(0, colon))), {}};
    if (colon != std::string_view::npos) {
        p.format = recortar(inside.substr(colon + 1));
        if (!known_format(p.format)) throw std::invalid_argument("formato desconocido \"" + p.format + "\"");
    }
    if (p.text == "pagina") p.kind = Kind::page;
    if (p.text == "paginas") p.kind = Kind::pages;
    if (p.text.starts_with("suma(") && p.text.ends_with(")")) {
        p.kind = Kind::sum;
        p.text = recortar(p.text.substr(5, p.text.size() - 6));
    }
    if (!es_nombre(p.text)) throw std::invalid_argument("nombre de campo no válido \"" + p.text + "\"");
    return p;
}

Template Template::parse(std::string_view text) {
    Template t;
    std::string literal;
    const auto flush = [&] {
        if (!literal.empty()) t.pieces_.push_back({Kind::literal, literal, {}});
        literal.clear();
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '{') {
            literal += text[i];
            continue;
        }
        if (i + 1 < text.size() && text[i + 1] == '{') {
            literal += '{';
            ++i;
            continue;
        }
        const auto end = text.find('}', i);
        if (end == std::string_view::npos) throw std::invalid_argument("falta \"}\" después de \"{\"");
        flush();
        t.pieces_.push_back(parse_piece(text.substr(i + 1, end - i - 1)));
        i = end;
    }
    flush();
    return t;
}

std::string Template::evaluate(const Context& c) const {
    std::string out;
    for (const Piece& p : pieces_) {
        switch (p.kind) {
        case Kind::literal: out += p.text; break;
        case Kind::page: out += std::to_string(c.page); break;
        case Kind::pages: out += PAGES_MARK; break;
        case Kind::sum: {
            const auto it = c.sums->find(p.text);
            out += formato(it == c.sums->end() ? 0 : it->second, p.format.empty() ? "#,##0" : p.format);
            break;
        }
        case Kind::field: {
            const int i = c.data->column(p.text);
            if (c.row < 0 || i < 0) break;
            const auto col = static_cast<std::size_t>(i);
            out +=
                show(c.data->rows[static_cast<std::size_t>(c.row)][col], c.data->columns[col].kind, p.format);
            break;
        }
        }
    }
    return out;
}

std::vector<std::string> Template::fields() const {
    std::vector<std::string> names;
    for (const Piece& p : pieces_)
        if (p.kind == Kind::field || p.kind == Kind::sum) names.push_back(p.text);
    return names;
}

std::vector<std::string> Template::summed() const {
    std::vector<std::string> names;
    for (const Piece& p : pieces_)
        if (p.kind == Kind::sum) names.push_back(p.text);
    return names;
}

bool Template::numeric() const {
    return std::any_of(pieces_.begin(), pieces_.end(), [](const Piece& p) {
        return p.format.find_first_of("0#") == 0 || p.kind == Kind::sum;
    });
}

Condition::Term Condition::parse_term(std::string_view text) {
    const auto at = text.find_first_of("<>=");
    if (at == std::string_view::npos)
        throw std::invalid_argument("condición no válida \"" + std::string(text) + "\"");
    const bool two =
        at + 1 < text.size() && (text[at + 1] == '=' || (text[at] == '<' && text[at + 1] == '>'));
    Term t;
    t.field = minusculas(recortar(text.substr(0, at)));
    t.op = text.substr(at, two ? 2 : 1);
    const std::string value = recortar(text.substr(at + t.op.size()));
    t.is_text = value.size() >= 2 && value.front() == '\'' && value.back() == '\'';
    if (t.is_text) {
        t.text = value.substr(1, value.size() - 2);
    } else {
        const auto r = std::from_chars(value.data(), value.data() + value.size(), t.number);
        if (value.empty() || r.ec != std::errc() || r.ptr != value.data() + value.size())
            throw std::invalid_argument("condición no válida \"" + std::string(text) + "\"");
    }
    if (!es_nombre(t.field)) throw std::invalid_argument("condición no válida \"" + std::string(text) + "\"");
    return t;
}

Condition Condition::parse(std::string_view text) {
    Condition c;
    while (!recortar(text).empty()) {
        const auto at = text.find(" y ");
        c.terms_.push_back(parse_term(text.substr(0, at)));
        if (at == std::string_view::npos) break;
        text.remove_prefix(at + 3);
    }
    return c;
}

bool Condition::holds(const Context& c) const {
    const auto compare = [&](const Term& t) {
        Value v;
        if (t.field == "pagina")
            v = Value(std::int64_t{c.page});
        else if (const int i = c.data->column(t.field); c.row >= 0 && i >= 0)
            v = c.data->rows[static_cast<std::size_t>(c.row)][static_cast<std::size_t>(i)];
        if (t.is_text) return recortar_fin(v.text()).compare(t.text);
        if (v.null()) return -1;
        return v.number() < t.number ? -1 : v.number() > t.number ? 1 : 0;
    };
    return std::all_of(terms_.begin(), terms_.end(), [&](const Term& t) {
        const int r = compare(t);
        if (t.op == "=") return r == 0;
        if (t.op == "<>") return r != 0;
        if (t.op == "<") return r < 0;
        if (t.op == "<=") return r <= 0;
        return t.op == ">" ? r > 0 : r >= 0;
    });
}

std::vector<std::string> Condition::fields() const {
    std::vector<std::string> names;
    for (const Term& t : terms_)
        if (t.field != "pagina") names.push_back(t.field);
    return names;
}

} // namespace quorvel::report
