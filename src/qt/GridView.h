#pragma once
#include "platform/ui/ctlPlanilla.h"

#include <QTableView>
#include <vector>

class QAction;
class QLineEdit;

namespace quorvel::qt {

class GridModel;
class SuggestionBox;

/// Paints a ctlPlanilla and forwards keys and clicks to it. Which cell is current, whether an edit is open
/// and what it holds is the planilla's business alone.
class GridView : public QTableView {
    Q_OBJECT
public:
    explicit GridView(QWidget* parent = nullptr);
    ~GridView() override;
    void attach(ui::ctlPlanilla& grid);
    /// The grid goes; the view may still get events until it goes too.
    void detach();
    /// Rows, columns, current cell and edit as the planilla has them.
    void sync();
    /// The open editor, or the view.
    [[nodiscard]] QWidget& focus_target();
    [[nodiscard]] QLineEdit& editor() const { return *editor_; }
    /// The open edit has been refused and is still as it was.
    [[nodiscard]] bool marks_refusal() const { return grid_ != nullptr && grid_->refused(); }
    /// Where a column's lookup button is drawn in a cell, in the viewport's coordinates.
    [[nodiscard]] QRect button_rect(int row, int col) const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void updateGeometries() override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void sync_current();
    void sync_editor();
    void sync_widths();
    void resizeEvent(QResizeEvent* event) override;
    void place_editor();
    bool forward(QKeyEvent& event);
    bool editor_key(QKeyEvent& event);
    void edited();
    void mark_refusal();
    void show_hint();
    void show_suggestions();
    void fetch_notes();
    void paste();
    ui::ctlPlanilla* grid_ = nullptr;
    GridModel* model_;
    QLineEdit* editor_;
    QAction* refused_mark_;
    SuggestionBox* suggestions_ = nullptr; ///< made when it is first needed
    std::vector<ui::Connection> links_;
    bool applying_widths_ = false, fetching_ = false;
    bool refused_ = false;  ///< the last change of the editor
    bool entering_ = false; ///< the grid is looking at the editor's text
};

} // namespace quorvel::qt
