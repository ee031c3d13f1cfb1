#include "qt/GridModel.h"

#include "qt/text.h"

namespace quorvel::qt {

void GridModel::attach(ui::ctlPlanilla& grid) {
    grid_ = &grid;
    sync_shape();
}

int GridModel::wanted_rows() const {
    return grid_->Rows() + (grid_->Locked() ? 0 : 1) + grid_->NewRowPending();
}

int GridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int GridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns_; }

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (grid_ == nullptr || !index.isValid() || index.column() >= grid_->Cols()) return {};
    if (role == Qt::TextAlignmentRole) {
        const bool right = grid_->Columns(index.column()).Alignment == 1;
        return QVariant::fromValue((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    if (index.row() > grid_->Rows()) return {};
    const std::string cell = grid_->TextMatrix(index.row(), index.column());
    if (role == NoteRole) return to_qt(grid_->notes.of(index.column(), cell));
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    const QString text = to_qt(cell);
    if (const auto& note = grid_->notes.of(index.column(), cell); role == Qt::ToolTipRole && !note.empty())
        return text + "  " + to_qt(note);
    // A tip only where the text may not fit.
    if (role == Qt::ToolTipRole && text.size() < 20) return {};
    return text;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (grid_ == nullptr || orientation != Qt::Horizontal || section >= grid_->Cols()) return {};
    if (role == Qt::DisplayRole) return to_qt(grid_->Columns(section).Caption);
    if (role == Qt::TextAlignmentRole) {
        const bool right = grid_->Columns(section).Alignment == 1;
        return QVariant::fromValue((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex&) const { return Qt::ItemIsEnabled | Qt::ItemIsSelectable; }

void GridModel::sync_shape() {
    const int rows = wanted_rows(), columns = grid_->Cols();
    if (columns != columns_) {
        beginResetModel();
        rows_ = rows;
        columns_ = columns;
        endResetModel();
        return;
    }
    if (rows > rows_) {
        beginInsertRows({}, rows_, rows - 1);
        rows_ = rows;
        endInsertRows();
    } else if (rows < rows_) {
        beginRemoveRows({}, rows, rows_ - 1);
        rows_ = rows;
        endRemoveRows();
    }
    if (rows_ > 0 && columns_ > 0) Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
    if (columns_ > 0) Q_EMIT headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
}

void GridModel::row_changed(int row) {
    if (wanted_rows() != rows_) return sync_shape();
    if (row >= 0 && row < rows_ && columns_ > 0) Q_EMIT dataChanged(index(row, 0), index(row, columns_ - 1));
}

} // namespace quorvel::qt
