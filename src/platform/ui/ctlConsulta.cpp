#include "platform/ui/ctlConsulta.h"

#include "platform/ui/form.h"
#include "platform/ui/utf8.h"
#include "text/letras_utf8.h"

#include <algorithm>
#include <utility>

namespace quorvel::ui {

namespace {
constexpr int BLOCK = 200; // rows that one screenful needs at most, read in a few milliseconds
constexpr std::size_t NONE = static_cast<std::size_t>(-1);

/// Words begin behind any sign ("O'Higgins"), numbers only a cell or behind a blank: not within a date or a
/// RUT.
bool has_word(const std::string& row, const std::string& beginning) {
    const bool number = beginning[0] >= '0' && beginning[0] <= '9';
    for (std::size_t at = row.find(beginning, 1); at != std::string::npos; at = row.find(beginning, at + 1)) {
        const char before = row[at - 1];
        if (before == '\n' || before == ' ' || (!number && !de_palabra(before))) return true;
    }
    return false;
}

std::string shown(const quorvel::Value& v, ColumnKind kind) {
    if (kind == ColumnKind::date) {
        const auto f = v.date();
        if (f) return fecha_dmy(*f);
    }
    return recortar_fin(v.text());
}
} // namespace

void ctlConsulta::SetSQL(std::string sql) {
    sql_ = std::move(sql);
    if (loaded_) Load();
}

void ctlConsulta::Narrow(std::string sql, Words words) {
    const bool same = loaded_ && sql == sql_ && order() == loaded_order_;
    sql_ = std::move(sql);
    words_ = std::move(words);
    if (!same) return Load();
    apply_filter();
    Changed();
}

std::string ctlConsulta::order() const {
    if (sorting_.column < 0) return order_by_;
    const std::string name = names_[static_cast<std::size_t>(sorting_.column)];
    const bool numeric = std::ranges::find(numeric_, name) != numeric_.end();
    const std::string by = (numeric ? "val(" + name + ")" : name) + (sorting_.descending ? " desc" : "");
    return by + (order_by_.empty() ? "" : ", " + recortar(order_by_));
}

void ctlConsulta::sort_by(int column) {
    if (column < 0 || column >= static_cast<int>(names_.size())) return;
    sorting_ = {column, column == sorting_.column && !sorting_.descending};
    bool loaded = false;
    Sorted(loaded);
    if (!loaded) Load();
}

void ctlConsulta::Load() {
    const std::string order_by = loaded_order_ = order(); // in the columns of the rows before
    loaded_ = true;
    ++revision_;
    rows_.clear();
    read_.clear();
    folded_.clear();
    names_.clear();
    kinds_.clear();
    sources_.clear();
    rs_.reset();
    rest_.clear();
    typed_.clear();
    missed_ = false;
    current_ = -1;
    if (db_ != nullptr && !sql_.empty()) {
        const std::string all_rows = order_by.empty() ? sql_ : sql_ + " order by " + recortar(order_by);
        // The rest of a result that comes as a whole is asked for when the person scrolls down to it.
        rest_ = !order_by.empty() && db_->sends_whole_results() ? all_rows : "";
        rs_ = db_->NewRecord(rest_.empty() ? all_rows : all_rows + " limit " + std::to_string(BLOCK));
        const auto& all = rs_->columns();
        names_ = wanted_;
        if (names_.empty())
            for (const auto& c : all) names_.push_back(c.name);
        for (const auto& name : names_) {
            const auto it = std::find_if(all.begin(), all.end(),
                                         [&](const ColumnInfo& c) { return igual_sin_caso(c.name, name); });
            sources_.push_back(it == all.end() ? NONE : static_cast<std::size_t>(it - all.begin()));
            kinds_.push_back(it == all.end() ? ColumnKind::text : it->kind);
        }
        read_block();
        current_ = rows_.empty() ? -1 : 0;
        if (filtered()) apply_filter();
    }
    Changed();
}

/// Rows are read once and kept while words are looked for in them.
void ctlConsulta::apply_filter() {
    ++revision_;
    if (!read_.empty()) rows_ = std::move(read_);
    read_.clear();
    if (filtered()) {
        while (read_block()) {
        }
        fold();
        read_ = std::move(rows_);
        rows_.clear();
        for (std::size_t i = 0; i < read_.size(); ++i)
            if (std::ranges::all_of(words_, [&](const auto& spellings) {
                    return std::ranges::any_of(spellings,
                                               [&](const auto& s) { return has_word(folded_[i], s); });
                }))
                rows_.push_back(read_[i]);
    }
    current_ = rows_.empty() ? -1 : 0;
}

bool ctlConsulta::more() {
    const bool read = read_block();
    if (read) Changed();
    return read;
}

void ctlConsulta::read_all() {
    bool read = false;
    while (read_block()) read = true;
    if (read) Changed();
}

bool ctlConsulta::read_block() {
    if (!rs_ && rest_.empty()) return false;
    if (!rs_) {
        rs_ = db_->NewRecord(std::exchange(rest_, {}));
        for (std::size_t shown_already = rows_.size(); shown_already > 0 && !rs_->eof(); --shown_already)
            rs_->MoveNext();
    }
    int n = 0;
    for (; n < BLOCK && !rs_->eof(); ++n, rs_->MoveNext()) {
        std::vector<std::string> row;
        for (std::size_t i = 0; i < sources_.size(); ++i)
            row.push_back(sources_[i] == NONE ? std::string() : shown(rs_->at(sources_[i]), kinds_[i]));
        rows_.push_back(std::move(row));
    }
    if (n < BLOCK) rest_.clear();
    if (n < BLOCK || !rest_.empty()) rs_.reset();
    return n > 0;
}

void ctlConsulta::set_current(int row) {
    while (row >= static_cast<int>(rows_.size()) && more()) {
    }
    const int last = static_cast<int>(rows_.size()) - 1;
    row = std::min(row, last);
    if (row < 0 || row == current_) return;
    current_ = row;
    Changed();
}

void ctlConsulta::pick(int row) {
    if (!Enabled() || row < 0 || row >= static_cast<int>(rows_.size())) return;
    const auto values = rows_[static_cast<std::size_t>(row)]; // the handler may unload the list
    form().atender([&] { Selected(values); });
}

void ctlConsulta::cancel() {
    form().atender([this] { Cancelled(); });
}

void ctlConsulta::fold() {
    while (folded_.size() < rows_.size()) {
        std::string text;
        for (const auto& cell : rows_[folded_.size()]) {
            const std::string folded = sin_acentos(cell), plain = reemplazar(folded, ".", "");
            text += "\n" + folded;
            if (plain != folded) text += "\n" + plain; // a RUT or an amount typed without its points
        }
        folded_.push_back(std::move(text));
    }
}

/// First row read so far, not before `from`, with the text after a mark: '\n' begins a cell, a blank a word.
int ctlConsulta::find_folded(const std::string& wanted, std::size_t from) {
    fold();
    for (; from < folded_.size(); ++from)
        if (folded_[from].find(wanted) != std::string::npos) return static_cast<int>(from);
    return -1;
}

bool ctlConsulta::search(const std::string& typed) {
    const std::string wanted = sin_acentos(recortar(typed));
    if (wanted.empty() || filtered()) return false;
    int found = -1;
    std::size_t from = 0;
    do {
        found = find_folded("\n" + wanted, from);
        from = rows_.size();
    } while (found < 0 && more());
    if (found < 0) found = find_folded(" " + wanted, 0);
    if (found < 0) return false;
    set_current(found);
    return true;
}

/// What is in no row is in none after one more letter either, so the form is told once.
void ctlConsulta::type(const KeyEvent& e) {
    if (e.key == Key::character)
        typed_ += utf8(e.ch);
    else
        drop_last(typed_);
    if (e.key == Key::character && missed_) return Changed();
    missed_ = !typed_.empty() && !search(typed_);
    if (missed_ && e.key == Key::character) {
        const std::string typed = typed_;
        bool missed = true;
        NotFound(typed, missed); // the form may load other rows
        typed_ = typed;
        missed_ = missed;
    }
    Changed();
}

void ctlConsulta::on_sort_key(KeyEvent& e) {
    const int columns = static_cast<int>(names_.size()), step = e.key == Key::right  ? 1
                                                                : e.key == Key::left ? -1
                                                                                     : 0;
    e.handled = step != 0 && columns > 0;
    if (e.handled) sort_by((std::max(sorting_.column, step > 0 ? -1 : 0) + step + columns) % columns);
}

void ctlConsulta::on_key(KeyEvent& e) {
    if (e.ctrl && !e.alt && !e.shift) return on_sort_key(e);
    if (e.ctrl || e.alt) return;
    if (e.key >= Key::insert || e.key == Key::tab || e.key == Key::backtab) return; // the form's own keys
    e.handled = true;
    if (e.key == Key::character || e.key == Key::backspace) return type(e);
    missed_ = false;
    if (!std::exchange(typed_, {}).empty()) Changed();
    switch (e.key) {
    case Key::up: return set_current(std::max(current_ - 1, 0));
    case Key::down: return set_current(current_ + 1);
    case Key::page_up: return set_current(std::max(current_ - 10, 0));
    case Key::page_down: return set_current(current_ + 10);
    case Key::home: return set_current(0);
    case Key::end: read_all(); return set_current(static_cast<int>(rows_.size()) - 1);
    case Key::enter: return pick(current_);
    case Key::escape: return cancel();
    default: e.handled = false;
    }
}

} // namespace quorvel::ui
