#include "qt/GridView.h"

#include "platform/ui/form.h"
#include "qt/BalanceLabel.h"
#include "qt/GridDelegate.h"
#include "qt/GridModel.h"
#include "qt/SuggestionBox.h"
#include "qt/icons.h"
#include "qt/keys.h"
#include "qt/row_height.h"
#include "qt/text.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QToolTip>
#include <algorithm>
#include <numeric>

namespace quorvel::qt {

namespace {

/// Widths are given for letters of the usual size.
double zoom() {
    const QVariant percent = qApp->property("zoom");
    return percent.isValid() ? percent.toInt() / 100.0 : 1;
}

} // namespace

GridView::GridView(QWidget* parent)
    : QTableView(parent), model_(new GridModel(this)), editor_(new QLineEdit(viewport())) {
    setModel(model_);
    setItemDelegate(new GridDelegate(*this));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setTabKeyNavigation(false);
    setAlternatingRowColors(false);
    setWordWrap(false);
    setShowGrid(false); // the delegate rules the cells in a colour that shows on light and dark
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_InputMethodEnabled);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    fit_rows(*this);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsMovable(false);
    horizontalHeader()->setStretchLastSection(true);
    editor_->hide();
    editor_->setFrame(false);
    editor_->setAccessibleName("Celda");
    editor_->setAcceptDrops(false);
    editor_->installEventFilter(this);
    refused_mark_ = editor_->addAction(warning_icon(), QLineEdit::TrailingPosition);
    refused_mark_->setToolTip("Valor no aceptado: corríjalo o deje la celda con Esc");
    connect(editor_, &QLineEdit::textChanged, this, [this] { edited(); });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section, int, int size) {
        if (grid_ != nullptr && !applying_widths_ && section < grid_->Cols() - 1) {
            ui::ctlPlanilla::Column& column = grid_->Columns(section);
            column.WidthChosen =
                column.WidthChosen || horizontalHeader()->cursor().shape() == Qt::SplitHCursor;
            column.Width = static_cast<int>(size / zoom());
        }
        place_editor();
    });
}

GridView::~GridView() = default;

void GridView::attach(ui::ctlPlanilla& grid) {
    grid_ = &grid;
    model_->attach(grid);
    links_.push_back(grid.RowPainted.connect([this](int row) { model_->row_changed(row); }));
    links_.push_back(grid.Reset.connect([this] { sync(); }));
    links_.push_back(grid.EditChanged.connect([this] { sync_editor(); }));
    links_.push_back(grid.Hinted.connect([this] { show_hint(); }));
    links_.push_back(grid.suggestions.Changed.connect([this] { show_suggestions(); }));
    links_.push_back(grid.notes.Fetched.connect([this] { viewport()->update(); }));
    links_.push_back(grid.form().Settled.connect([this] { fetch_notes(); }));
    links_.push_back(grid.RowColChange.connect([this](int, int) { sync_current(); }));
    sync();
}

void GridView::detach() {
    links_.clear();
    grid_ = nullptr;
    model_->detach();
}

void GridView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange) return;
    fit_rows(*this);
    sync_widths();
}

void GridView::sync() {
    model_->sync_shape();
    sync_widths();
    sync_current();
    sync_editor();
}

/// Columns as wide as the planilla says, and never narrower than their captions, with the names beside their
/// codes where there is room; what that takes too much of it, the widest column gives back.
void GridView::sync_widths() {
    if (grid_ == nullptr || grid_->Cols() == 0) return;
    const int least = static_cast<int>(120 * zoom()), least_beside_notes = static_cast<int>(150 * zoom());
    std::vector<int> widths;
    for (int i = 0; i < grid_->Cols(); ++i) {
        const int wanted = static_cast<int>(grid_->Columns(i).Width * zoom());
        widths.push_back(
            std::max(wanted > 0 ? wanted : columnWidth(i), horizontalHeader()->sectionSizeHint(i)));
    }
    int excess = std::accumulate(widths.begin(), widths.end(), 0) - viewport()->width();
    int* widest = nullptr;
    for (int i = 0; i < grid_->Cols(); ++i) {
        int& width = widths[static_cast<std::size_t>(i)];
        if (!grid_->Columns(i).WidthChosen && (widest == nullptr || width > *widest)) widest = &width;
    }
    for (int i = 0; widest != nullptr && i < grid_->Cols(); ++i) {
        const ui::ctlPlanilla::Column& column = grid_->Columns(i);
        const int room = column.WidthChosen ? 0 : std::max(*widest - least_beside_notes - excess, 0);
        const int note = std::min(column.NoteWidth, room);
        widths[static_cast<std::size_t>(i)] += note;
        excess += note;
    }
    if (widest != nullptr && excess > 0 && excess <= *widest - least) *widest -= excess;
    applying_widths_ = true;
    for (int i = 0; i < grid_->Cols(); ++i)
        if (columnWidth(i) != widths[static_cast<std::size_t>(i)])
            setColumnWidth(i, widths[static_cast<std::size_t>(i)]);
    applying_widths_ = false;
}

void GridView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    sync_widths();
}

void GridView::sync_current() {
    const QModelIndex wanted = model_->index(grid_->Row(), grid_->Col());
    if (wanted != currentIndex()) {
        setCurrentIndex(wanted);
        if (wanted.isValid()) scrollTo(wanted);
        viewport()->update();
    }
    place_editor();
}

void GridView::sync_editor() {
    model_->row_changed(grid_->Row());
    if (!grid_->EditActive()) {
        if (editor_->isHidden()) return;
        const bool had_focus = editor_->hasFocus() || window()->focusWidget() == editor_;
        // Hiding a focused widget hands the focus to its neighbour unless the view takes it first.
        if (had_focus) setFocus(Qt::OtherFocusReason);
        editor_->hide();
        return;
    }
    const QString text = to_qt(grid_->edit_text());
    if (entering_) return;
    if (editor_->text() != text) {
        const QSignalBlocker block(editor_);
        const auto behind = editor_->text().size() - editor_->cursorPosition();
        editor_->setText(text);
        editor_->setCursorPosition(static_cast<int>(std::max(text.size() - behind, 0LL)));
    }
    if (grid_->proposed()) editor_->selectAll();
    mark_refusal();
    viewport()->update();
    const ui::ctlPlanilla::Column& column = grid_->Columns(grid_->Col());
    editor_->setAccessibleName(
        QString::fromUtf8("%1, línea %2").arg(to_qt(column.Caption)).arg(grid_->Row() + 1));
    editor_->setAccessibleDescription(grid_->refused() ? refused_mark_->toolTip() : QString());
    const bool right = column.Alignment == 1;
    editor_->setAlignment((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (editor_->isHidden()) {
        sync_current();
        editor_->show();
        place_editor();
        grid_->proposed() ? editor_->selectAll() : editor_->end(false);
        if (grid_->has_focus()) editor_->setFocus(Qt::OtherFocusReason);
    }
}

/// The ground says it in every cell; the sign does where the text leaves it room.
void GridView::mark_refusal() {
    const bool refused = grid_->refused();
    QPalette colours = palette();
    const bool dark = colours.color(QPalette::Window).lightness() < 128;
    if (refused) {
        colours.setColor(QPalette::Base, BalanceLabel::colours(dark, false).ground);
        colours.setColor(QPalette::Text, BalanceLabel::colours(dark, false).ink);
    }
    editor_->setPalette(colours);
    const int room = columnWidth(grid_->Col()) - (button_rect(grid_->Row(), grid_->Col()).isValid() ? 19 : 0);
    const int sign = editor_->fontMetrics().height() + 12;
    refused_mark_->setVisible(refused &&
                              editor_->fontMetrics().horizontalAdvance(editor_->text()) + sign < room);
}

/// Beside the cell that did not open; a person who looks at the paper hears it.
void GridView::show_hint() {
    const QString hint = to_qt(grid_->hint());
    const QRect cell = visualRect(model_->index(grid_->Row(), grid_->Col()));
    hint.isEmpty() ? QToolTip::hideText()
                   : QToolTip::showText(viewport()->mapToGlobal(cell.bottomLeft()), hint, viewport());
    if (!hint.isEmpty()) QApplication::beep();
}

void GridView::show_suggestions() {
    if (suggestions_ == nullptr) {
        suggestions_ = new SuggestionBox(*window());
        connect(suggestions_, &SuggestionBox::taken, this, [this](int row) {
            if (grid_ == nullptr) return;
            grid_->form().atender([&] {
                grid_->suggestions.choose(row);
                (void)grid_->take_suggestion();
            });
        });
    }
    suggestions_->show_under(*viewport(), visualRect(model_->index(grid_->Row(), grid_->Col())),
                             grid_->suggestions);
}

/// When no procedure is at work with the session; what was painted meanwhile waits for the next time.
void GridView::fetch_notes() {
    if (!grid_->notes.wanted() || fetching_) return;
    fetching_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            fetching_ = false;
            if (grid_ == nullptr || grid_->form().escritorio().acting() != nullptr) return;
            grid_->form().atender([this] { grid_->notes.fetch(); });
        },
        Qt::QueuedConnection);
}

void GridView::place_editor() {
    if (grid_ == nullptr || !grid_->EditActive()) return;
    QRect cell = visualRect(model_->index(grid_->Row(), grid_->Col()));
    if (const QRect button = button_rect(grid_->Row(), grid_->Col()); button.isValid())
        cell.setRight(button.left() - 1);
    editor_->setGeometry(cell.adjusted(2, 2, -2, -2));
}

QWidget& GridView::focus_target() {
    if (grid_ != nullptr && grid_->EditActive() && !editor_->isHidden()) return *editor_;
    return *this;
}

QRect GridView::button_rect(int row, int col) const {
    if (grid_ == nullptr || col >= grid_->Cols() || !grid_->Columns(col).Button || grid_->Locked()) return {};
    if (row != grid_->Row() || col != grid_->Col()) return {};
    const QRect cell = visualRect(model_->index(row, col));
    return QRect(cell.right() - 19, cell.top(), 19, cell.height());
}

bool GridView::forward(QKeyEvent& event) {
    auto e = translate(event);
    if (!e) return false;
    if (!grid_->has_focus() && !grid_->SetFocus()) return true;
    grid_->form().send_key(*e);
    return e->handled || !e->alt;
}

void GridView::paste() {
    const std::string text = to_std(QApplication::clipboard()->text());
    grid_->form().atender([&] { grid_->paste(text); });
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if (grid_ == nullptr) return;
    if (event->matches(QKeySequence::Copy)) {
        QApplication::clipboard()->setText(to_qt(grid_->TextMatrix(grid_->Row(), grid_->Col())));
    } else if (event->matches(QKeySequence::Paste)) {
        paste();
    } else if (!forward(*event)) {
        event->ignore();
    }
}

void GridView::inputMethodEvent(QInputMethodEvent* event) {
    if (grid_ == nullptr) return;
    // A composed letter (dead key and vowel) starts an edit as a plain letter does.
    for (const auto ch : event->commitString().toUcs4()) {
        ui::KeyEvent e;
        e.ch = ch;
        grid_->form().send_key(e);
    }
    event->accept();
}

bool GridView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        claim_before_shortcuts(*static_cast<QKeyEvent*>(event), *this);
        return true;
    }
    // Tab never reaches keyPressEvent of an item view's base class as navigation: it is a key like any other.
    if (event->type() == QEvent::KeyPress) {
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return event->isAccepted();
    }
    return QTableView::event(event);
}

/// Keys, the clipboard, the middle button, dead keys: whatever changed the editor's text ends here.
void GridView::edited() {
    if (grid_ == nullptr || !grid_->EditActive() || entering_) return;
    entering_ = true; // a refused text stays in sight while the message tells why
    grid_->form().atender([this] { refused_ = !grid_->user_edit(to_std(editor_->text())); });
    entering_ = false;
    if (grid_ != nullptr) sync_editor();
}

bool GridView::editor_key(QKeyEvent& event) {
    auto e = translate(event);
    if (!e) return false;
    const bool deletes_line = e->key == ui::Key::del && e->ctrl;
    const bool native = edits_natively(event) && !deletes_line;
    const bool pastes = event.matches(QKeySequence::Paste);
    if (!native && !pastes && !types_character(*e)) {
        forward(event);
        return true;
    }
    grid_->form().atender(
        [&] { e->handled = (grid_->KeyDown(*e), e->handled) || (native && !grid_->takes_key(*e)); });
    if (e->handled || grid_ == nullptr || !grid_->EditActive()) return true;
    if (native) return false;
    insert(*editor_, pastes ? QApplication::clipboard()->text() : QString::fromUcs4(&e->ch, 1), refused_);
    return true;
}

bool GridView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != editor_ || grid_ == nullptr) return QTableView::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        claim_before_shortcuts(*static_cast<QKeyEvent*>(event), *this);
        return false;
    case QEvent::KeyPress: return editor_key(*static_cast<QKeyEvent*>(event));
    case QEvent::FocusIn:
    case QEvent::FocusOut: viewport()->update(); return false;
    default: return false;
    }
}

void GridView::mousePressEvent(QMouseEvent* event) {
    if (grid_ == nullptr || event->button() != Qt::LeftButton) return;
    event->accept();
    const QPoint at = event->position().toPoint();
    const QModelIndex cell = indexAt(at);
    grid_->form().atender([&] {
        if (!grid_->has_focus() && !grid_->SetFocus()) return;
        if (!cell.isValid()) return;
        if (button_rect(cell.row(), cell.column()).contains(at)) {
            grid_->press_button(cell.row(), cell.column());
            return;
        }
        const bool again = cell.row() == grid_->Row() && cell.column() == grid_->Col();
        if (again && hasFocus())
            grid_->begin_edit(true);
        else if (!again)
            grid_->move_to(cell.row(), cell.column());
    });
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void GridView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    const QModelIndex cell = indexAt(at);
    const bool on_button = cell.isValid() && button_rect(cell.row(), cell.column()).contains(at);
    viewport()->setCursor(on_button ? Qt::PointingHandCursor : Qt::ArrowCursor);
    viewport()->setToolTip(on_button ? "Buscar (Ctrl+Y)" : QString());
}

void GridView::mouseReleaseEvent(QMouseEvent* event) { event->accept(); }

void GridView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    if (&focus_target() == editor_) editor_->setFocus(Qt::OtherFocusReason);
    viewport()->update();
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
    if (grid_ == nullptr) return;
    const QModelIndex cell = indexAt(event->pos());
    if (event->reason() == QContextMenuEvent::Mouse && cell.isValid() &&
        (!grid_->SetFocus() || !grid_->move_to(cell.row(), cell.column())))
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const int row = grid_->Row(), col = grid_->Col();
    if (grid_->Columns(col).Button && !grid_->Locked())
        menu->addAction("Buscar\tCtrl+Y", this, [this, row, col] { grid_->press_button(row, col); });
    if (grid_->can_undo()) menu->addAction("Deshacer\tCtrl+Z", this, [this] { grid_->undo(); });
    if (grid_->can_redo())
        menu->addAction("Rehacer\t" + shortcut_text("ctrl+shift+z"), this, [this] { grid_->redo(); });
    for (const ui::Command& command : grid_->commands())
        menu->addAction(to_qt(command.caption) + '\t' + shortcut_text(command.shortcut), this, command.run);
    menu->popup(event->reason() == QContextMenuEvent::Mouse
                    ? event->globalPos()
                    : viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

void GridView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (grid_ != nullptr) fetch_notes();
    if (grid_ == nullptr || grid_->Rows() > 0 || grid_->NewRowPending() == 1) return;
    const QString hint =
        grid_->ToolTip().empty() ? property("empty_text").toString() : to_qt(grid_->ToolTip());
    QPainter painter(viewport());
    painter.setPen(
        palette().color(grid_->ToolTip().empty() ? QPalette::PlaceholderText : QPalette::WindowText));
    painter.drawText(viewport()->rect().adjusted(20, 20, -20, -20), Qt::AlignCenter | Qt::TextWordWrap, hint);
}

void GridView::updateGeometries() {
    QTableView::updateGeometries();
    place_editor();
}

void GridView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    place_editor();
}

} // namespace quorvel::qt
