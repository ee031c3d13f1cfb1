#include "platform/db/buffered_recordset.h"

#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel {

/// Reads until the row is there or the end is reached.
void BufferedRecordset::load(std::size_t row) {
    while (!complete_ && row * columns_->info.size() >= cells_.size()) complete_ = !fetch(cells_);
}

void BufferedRecordset::complete() {
    while (!complete_) complete_ = !fetch(cells_);
}

bool BufferedRecordset::eof() {
    if (searched_) return found_.empty();
    load(row_);
    return row_ * columns_->info.size() >= cells_.size();
}

void BufferedRecordset::MoveNext() {
    if (searched_)
        found_.clear();
    else if (!eof())
        ++row_;
}

void BufferedRecordset::FindFirst(const std::string& criteria) {
    searched_ = true;
    found_.clear();
    read(find_sql(criteria), found_);
    nomatch_ = found_.empty();
}

const Value& BufferedRecordset::cell(std::size_t i) {
    const std::size_t width = columns_->info.size();
    if (i >= width) throw std::out_of_range("Columna desconocida: " + std::to_string(i));
    if (eof()) throw std::out_of_range("No hay fila actual");
    return searched_ ? found_[i] : cells_[row_ * width + i];
}

Value BufferedRecordset::at(std::size_t i) { return cell(i); }

Recordset::Field BufferedRecordset::fields(std::string_view name) {
    const auto& info = columns_->info;
    auto c = std::find_if(info.begin(), info.end(), [&](const ColumnInfo& x) { return x.name == name; });
    if (c == info.end()) {
        const std::string folded = minusculas(normalizar(name));
        c = std::find_if(info.begin(), info.end(), [&](const ColumnInfo& x) { return x.name == folded; });
    }
    if (c == info.end()) throw std::out_of_range("Columna desconocida: " + std::string(name));
    return {cell(static_cast<std::size_t>(c - info.begin()))};
}

const std::vector<ColumnInfo>& BufferedRecordset::columns() {
    const auto& declared = columns_->declared;
    if (std::find(declared.begin(), declared.end(), false) == declared.end()) return columns_->info;
    if (!resolved_.empty()) return resolved_;
    load(0);
    resolved_ = columns_->info;
    const std::size_t width = resolved_.size();
    for (std::size_t i = 0; i < width; ++i)
        for (std::size_t at = i; !declared[i] && at < cells_.size(); at += width) {
            if (cells_[at].null()) continue;
            if (!cells_[at].is_text()) resolved_[i].kind = ColumnKind::number;
            break;
        }
    return resolved_;
}

} // namespace quorvel
