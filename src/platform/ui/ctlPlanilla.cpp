#include "platform/ui/ctlPlanilla.h"

#include "platform/ui/form.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>

namespace quorvel::ui {

namespace {
const std::string EMPTY;
} // namespace

ctlPlanilla::ctlPlanilla(Form& form, std::string name) : Control(form, std::move(name)) {}

ctlPlanilla::~ctlPlanilla() = default;

void ctlPlanilla::SetCols(int n) {
    const bool fewer = n < Cols();
    columns_.resize(static_cast<std::size_t>(n));
    const auto fit = [&](Cells& cells) {
        // rows pushed before the columns were built keep all their cells
        if (fewer || cells.size() < columns_.size()) cells.resize(columns_.size());
    };
    std::for_each(rows_.begin(), rows_.end(), fit);
    fit(new_row_);
    col_ = std::clamp(col_, 0, std::max(n - 1, 0));
    Reset();
}

const std::string& ctlPlanilla::stored(int row, int col) const {
    if (row < 0 || row > Rows() || col < 0) return EMPTY;
    const Cells& cells = row == Rows() ? new_row_ : rows_[static_cast<std::size_t>(row)];
    return static_cast<std::size_t>(col) < cells.size() ? cells[static_cast<std::size_t>(col)] : EMPTY;
}

void ctlPlanilla::store(int row, int col, std::string text) {
    if (row < 0 || row > Rows() || col < 0) return;
    if (row == Rows() && !opening_) {
        open_pending();
        entered_ = true;
    }
    Cells& cells = row == Rows() ? new_row_ : rows_[static_cast<std::size_t>(row)];
    if (cells.size() <= static_cast<std::size_t>(col)) cells.resize(static_cast<std::size_t>(col) + 1);
    std::string& cell = cells[static_cast<std::size_t>(col)];
    if (row < Rows()) history_.note({History::Change::cell, row, col, {cell}});
    cell = std::move(text);
    RowPainted(row);
}

std::string ctlPlanilla::TextMatrix(int row, int col) const {
    return committing_ && being_edited(row, col) ? edit_ : stored(row, col);
}

void ctlPlanilla::SetTextMatrix(int row, int col, std::string text) {
    text = sin_controles(text);
    const bool edited = being_edited(row, col);
    if (edited) edit_ = text;
    if (edited && committing_) { // what is being committed, not what is there already
        EditChanged();
        return;
    }
    if (edited) old_text_ = text;
    if (row == Rows() && text.empty() && stored(row, col).empty()) return; // emptying nothing enters nothing
    store(row, col, std::move(text));
    if (edited) EditChanged();
}

std::string ctlPlanilla::Value(int col) const { return being_edited(row_, col) ? edit_ : stored(row_, col); }

void ctlPlanilla::SetValue(int col, std::string text) { SetTextMatrix(row_, col, std::move(text)); }

void ctlPlanilla::SetLocked(bool locked) {
    if (locked == locked_) return;
    locked_ = locked;
    if (locked_) {
        close_edit();
        settle_pending();
        if (on_new_row() && Rows() > 0) set_current(Rows() - 1, col_);
    }
    Reset();
    Changed();
}

std::string ctlPlanilla::as_shown(int col, const quorvel::Value& value, ColumnKind kind) const {
    if (value.null()) return {};
    const std::string pattern = col < Cols() ? Columns(col).NumberFormat : std::string();
    if (!pattern.empty() && (!value.is_text() || kind == ColumnKind::number))
        return value.is_integer() ? Decimal(value.integer()).formato(pattern)
                                  : formato(value.number(), pattern, false);
    if (value.is_double() || (value.is_text() && kind == ColumnKind::number))
        return reemplazar(value.text(), ".", ",");
    if (kind == ColumnKind::date)
        if (const auto f = value.date()) return fecha_dmy(*f);
    return recortar_fin(sin_controles(value.text()));
}

void ctlPlanilla::Load() {
    std::vector<Cells> rows;
    if (db_ != nullptr && !record_source_.empty()) {
        const auto rs = db_->NewRecord(record_source_);
        const auto columns = rs->columns();
        for (; !rs->eof(); rs->MoveNext()) {
            Cells cells;
            cells.reserve(columns.size());
            for (std::size_t i = 0; i < columns.size(); ++i)
                cells.push_back(as_shown(static_cast<int>(i), rs->at(i), columns[i].kind));
            if (cells.size() < columns_.size()) cells.resize(columns_.size());
            rows.push_back(std::move(cells));
        }
    }
    close_edit();
    drop_pending();
    history_.clear();
    rows_ = std::move(rows);
    const int last_row = row_;
    row_ = 0;
    Reset();
    RowsChanged();
    RowColChange(last_row, col_);
}

void ctlPlanilla::AddItem(const std::string& text) {
    append(text);
    Reset();
}

void ctlPlanilla::AddItems(const std::vector<std::string>& texts) {
    if (rows_.capacity() < rows_.size() + texts.size()) rows_.reserve(2 * rows_.size() + texts.size());
    for (const std::string& text : texts) append(text);
    Reset();
}

void ctlPlanilla::append(const std::string& text) {
    Cells cells;
    std::size_t begin = 0;
    for (std::size_t tab = 0; tab != std::string::npos; begin = tab + 1) {
        tab = text.find('\t', begin);
        cells.push_back(sin_controles(text.substr(begin, tab == std::string::npos ? tab : tab - begin)));
    }
    if (cells.size() < columns_.size()) cells.resize(columns_.size());
    const bool follow = pending_;
    const bool edit_follows = editing_ && edit_row_ == Rows();
    rows_.push_back(std::move(cells));
    if (follow) ++row_; // the row being added stays the current one, now one further down
    if (edit_follows) ++edit_row_;
}

void ctlPlanilla::Clear() {
    close_edit();
    drop_pending();
    history_.clear();
    rows_.clear();
    const int last_row = row_;
    row_ = 0;
    Reset();
    RowsChanged();
    if (last_row != 0) RowColChange(last_row, col_);
}

void ctlPlanilla::RemoveRow(int row) {
    if (row < 0 || row > Rows()) return;
    if (row == Rows()) {
        close_edit();
        drop_pending();
    } else {
        if (editing_ && edit_row_ == row) close_edit();
        if (editing_ && edit_row_ > row) --edit_row_;
        if (!history_.recording()) history_.clear(); // its rows are no longer where they were
        history_.note({History::Change::removed, row, 0, std::move(rows_[static_cast<std::size_t>(row)])});
        rows_.erase(rows_.begin() + row);
        if (row_ > row || row_ > Rows()) --row_;
    }
    Reset();
    RowsChanged();
    if (row == row_) RowColChange(row, col_);
}

void ctlPlanilla::Refresh() {
    Reset();
    Changed();
}

void ctlPlanilla::open_pending() {
    if (pending_) return;
    pending_ = true;
    new_row_.resize(std::max(new_row_.size(), columns_.size()));
    Reset(); // a blank row appears below
}

void ctlPlanilla::drop_pending() {
    std::fill(new_row_.begin(), new_row_.end(), std::string());
    pending_ = entered_ = false;
}

void ctlPlanilla::settle_pending() {
    if (!pending_) return;
    if (entered_) {
        rows_.push_back(new_row_);
        history_.note({History::Change::inserted, Rows() - 1, 0, {}});
        if (row_ >= Rows()) row_ = Rows() - 1;
    }
    drop_pending();
    Reset();
}

} // namespace quorvel::ui
