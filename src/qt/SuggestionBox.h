#pragma once
#include "platform/ui/suggestions.h"

#include <QListWidget>

namespace quorvel::qt {

/// The list under an open cell. It never has the focus: keys go to the cell, the mouse takes a row.
class SuggestionBox : public QListWidget {
    Q_OBJECT
public:
    explicit SuggestionBox(QWidget& window);
    /// @param cell in the coordinates of its owner; the list stands above it where there is no room below
    void show_under(const QWidget& owner, const QRect& cell, const ui::Suggestions& suggestions);

Q_SIGNALS:
    void taken(int row);

private:
    void fill(const ui::Suggestions& suggestions);
};

} // namespace quorvel::qt
