#pragma once
#include "platform/ui/ctlPlanilla.h"

#include <QAbstractTableModel>

namespace quorvel::qt {

/// Reads a ctlPlanilla for a table view; never writes. Below the data stand the row being added and, while
/// that row is pending, one more blank row, so that a person can leave it downwards.
class GridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int NoteRole = Qt::UserRole; ///< what a code is called
    explicit GridModel(QObject* parent) : QAbstractTableModel(parent) {}
    void attach(ui::ctlPlanilla& grid);
    void detach() { grid_ = nullptr; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// The number of rows or columns may have changed; only the difference is announced.
    void sync_shape();
    void row_changed(int row);

private:
    [[nodiscard]] int wanted_rows() const;
    ui::ctlPlanilla* grid_ = nullptr;
    int rows_ = 0, columns_ = 0;
};

} // namespace quorvel::qt
