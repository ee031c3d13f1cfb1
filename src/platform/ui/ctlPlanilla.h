#pragma once
#include "platform/db/clsConexion.h"
#include "platform/ui/cell_notes.h"
#include "platform/ui/control.h"
#include "platform/ui/entry.h"
#include "platform/ui/history.h"
#include "platform/ui/suggestions.h"

namespace quorvel::ui {

/// Editable grid of the suite. Holds rows, the current cell, the open edit and the row being added; knows
/// every editing rule that is not a form's own, so that a window and a script behave the same.
///
/// Data rows are 0 to Rows()-1. Row() == Rows() is the row being added: blank until something is typed
/// (NewRowPending() 0), then pending (1) until it is left downwards or upwards, which commits it as a row.
class ctlPlanilla : public Control {
public:
    struct Column {
        std::string Caption, NumberFormat;
        int Width = 0;
        int Alignment = 0; ///< 1 right
        bool Button = false;
        bool WidthChosen = false; ///< by a person: it does not give way to the others
        int NoteWidth = 0;        ///< what a view adds for the notes, if it has the room
    };
    ctlPlanilla(Form& form, std::string name);
    ~ctlPlanilla() override;
    [[nodiscard]] std::string_view kind() const override { return "ctlPlanilla"; }
    [[nodiscard]] bool stays_open_for_commands() const override { return true; }

    [[nodiscard]] int Cols() const { return static_cast<int>(columns_.size()); }
    void SetCols(int n); ///< keeps rows and columns that stay
    [[nodiscard]] int Rows() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] int Row() const { return row_; }
    [[nodiscard]] int Col() const { return col_; }
    /// From code: moves the current cell without asking (BeforeColUpdate is not raised); RowColChange is.
    void SetRow(int row);
    void SetCol(int col);
    [[nodiscard]] std::string TextMatrix(int row, int col) const; ///< row Rows() reads the row being added
    void SetTextMatrix(int row, int col, std::string text);
    [[nodiscard]] Column& Columns(int i) { return columns_.at(static_cast<std::size_t>(i)); }
    [[nodiscard]] const Column& Columns(int i) const { return columns_.at(static_cast<std::size_t>(i)); }
    /// The column's cell in the current row; while that cell is being edited, the text of the edit.
    [[nodiscard]] std::string Value(int col) const;
    void SetValue(int col, std::string text);
    [[nodiscard]] bool Locked() const { return locked_; }
    void SetLocked(bool locked);
    [[nodiscard]] bool EditActive() const { return editing_; }
    [[nodiscard]] int NewRowPending() const { return pending_ ? 1 : 0; }
    [[nodiscard]] const std::vector<std::string>& pending_cells() const { return new_row_; }

    void SetConnection(clsConexion* db) { db_ = db; }
    void SetRecordSource(std::string sql) { record_source_ = std::move(sql); }
    /// Replaces all rows by the query's result, columns in the order of the query, numbers through the
    /// column's NumberFormat in the Chilean form. Raises RowsChanged once. @throws ErrorSesion
    void Load();
    /// Appends a row given as cells joined by tabs. Raises nothing.
    void AddItem(const std::string& text);
    /// Appends many rows at the price of one notice to the view.
    void AddItems(const std::vector<std::string>& texts);
    /// Removes all rows, the pending one and the open edit. Raises RowsChanged.
    void Clear();
    void RemoveRow(int row); ///< from code: no BeforeDelete; raises RowsChanged
    void Refresh();

    // What a person does.
    /// Moves the current cell: commits the open edit, and the pending row when the row changes.
    /// @return false when something refused
    bool move_to(int row, int col);
    /// Opens the edit of the current cell. @param keep false starts with an empty text (typing replaces)
    bool begin_edit(bool keep = true);
    /// Opens the edit of the current cell with a text that nobody has typed: Enter and Tab accept it, typing
    /// replaces it, anything else drops it.
    bool propose(const std::string& text);
    [[nodiscard]] bool proposed() const { return proposed_; }
    /// The open edit has just been refused; the next change of its text takes the mark away.
    [[nodiscard]] bool refused() const { return refused_; }
    [[nodiscard]] const std::string& edit_text() const { return edit_; }
    void set_edit_text(std::string text); ///< from code: no rules
    /// The text of the view's editor became this, by whatever way: what is new in it goes through the rules.
    /// @return false when it was refused
    bool user_edit(const std::string& text);
    /// One typed character. Opens an edit when none is open. @return false when discarded
    bool type(char32_t ch);
    /// Whether a key that changes the text without typing (Backspace, a control code) may do so.
    [[nodiscard]] bool takes_key(const KeyEvent& e);
    /// Closes the edit through BeforeColUpdate and AfterColUpdate; an unchanged text raises neither.
    bool commit_edit();
    void cancel_edit();        ///< Escape: the cell's old text comes back
    void cancel_pending_row(); ///< Escape again: the row being added is emptied; raises RowsChanged
    bool delete_row();         ///< BeforeDelete, then removes the current row; raises RowsChanged
    void press_button(int row, int col);
    /// Takes the last step back: an open edit, the row being added, else what was done to the rows; raises
    /// RowsChanged. @return false when there is none
    bool undo();
    bool redo();
    /// What the work does to the rows is taken back as one step.
    void one_step(const std::function<void()>& work);
    [[nodiscard]] bool can_undo() const { return editing_ || pending_ || !history_.done.empty(); }
    [[nodiscard]] bool can_redo() const { return !history_.undone.empty(); }
    /// Text from the clipboard: lines and tabs fill cells from the current one, until one does not take its
    /// text; into an open edit it comes as one text.
    void paste(const std::string& text);
    /// Why the cell has just not opened, for a view to show beside it; empty after the next key or move.
    [[nodiscard]] const std::string& hint() const { return hint_; }
    void SetHint(std::string text);
    /// Enter after this column goes to the next row; -1 = last column. Tab visits every column.
    void SetEnterColumns(int first, int last) {
        enter_first_ = first;
        enter_last_ = last;
    }

    /// Closes the list under the open cell and commits what was chosen in it.
    bool take_suggestion();
    Suggestions suggestions; ///< under the open cell
    CellNotes notes;         ///< beside the codes

    Event<int&> KeyPress;       ///< 0 discards the key
    Event<Entry&> TextEntering; ///< before KeyPress is asked about its characters; of the current column
    Event<int> ButtonClick;
    Event<int, bool&> BeforeColEdit;
    Event<int, const std::string&, bool&> BeforeColUpdate; ///< column, old text, cancel
    Event<int> AfterColUpdate;
    Event<bool&> BeforeDelete;
    Event<> RowsChanged; ///< rows were removed or replaced as a whole
    Event<int, int> RowColChange;

    // What a view repaints.
    Event<int> RowPainted; ///< cells of this row changed
    Event<> Reset;         ///< number of rows or columns changed
    Event<> EditChanged;   ///< an edit opened, closed, changed its text or kept it against a view
    Event<> Hinted;

protected:
    void on_key(KeyEvent& e) override;
    bool on_leave() override; ///< commits the open edit, keeps the pending row

private:
    using Cells = std::vector<std::string>;
    [[nodiscard]] bool on_new_row() const { return row_ == Rows(); }
    [[nodiscard]] const std::string& stored(int row, int col) const;
    void store(int row, int col, std::string text);
    [[nodiscard]] bool being_edited(int row, int col) const {
        return editing_ && row == edit_row_ && col == edit_col_;
    }
    [[nodiscard]] std::string as_shown(int col, const quorvel::Value& value, ColumnKind kind) const;
    void append(const std::string& text);
    void open_pending();
    void drop_pending();
    void settle_pending(); ///< the pending row becomes a row, or goes away when nothing was entered
    void close_edit();
    void set_current(int row, int col);
    bool start_edit(bool keep);
    bool finish_edit();
    bool go(int row, int col);
    bool remove_current();
    [[nodiscard]] bool enter(Entry e);
    [[nodiscard]] bool admit(Entry& e);
    bool replay(std::vector<History::Step>& from, std::vector<History::Step>& to);
    [[nodiscard]] History::Change revert(History::Change change);
    void paste_block(const std::string& text);
    void on_move_key(KeyEvent& e);
    void on_step_key(KeyEvent& e);
    void on_text_key(KeyEvent& e);
    void clear_cell();
    std::vector<Column> columns_;
    std::vector<Cells> rows_;
    Cells new_row_;
    History history_;
    clsConexion* db_ = nullptr;
    std::string record_source_, edit_, old_text_, hint_;
    int row_ = 0, col_ = 0, edit_row_ = 0, edit_col_ = 0, enter_first_ = 0, enter_last_ = -1;
    bool locked_ = false, editing_ = false, pending_ = false, entered_ = false;
    bool opening_ = false, committing_ = false, proposed_ = false, refused_ = false;
};

} // namespace quorvel::ui
