#pragma once
#include <QHeaderView>
#include <QTableView>

namespace quorvel::qt {

/// Rows as high as the view's letters, and some air.
inline void fit_rows(QTableView& view) {
    view.verticalHeader()->setMinimumSectionSize(view.fontMetrics().height() + 4);
    view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() + 10);
}

} // namespace quorvel::qt
