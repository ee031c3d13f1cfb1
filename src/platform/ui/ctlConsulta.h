#pragma once
#include "platform/db/clsConexion.h"
#include "platform/ui/control.h"

#include <map>

namespace quorvel::ui {

/// Search list of the suite: runs a query and lets the person pick a row. Dates are shown "dd/mm/yyyy".
class ctlConsulta : public Control {
public:
    using Control::Control;
    [[nodiscard]] std::string_view kind() const override { return "ctlConsulta"; }
    void SetConnection(clsConexion* db) { db_ = db; }
    [[nodiscard]] const std::string& SQL() const { return sql_; }
    /// Replaces the query; once loaded, the rows follow at once.
    void SetSQL(std::string sql);
    /// Words that a shown row must have, each in one of its spellings (folded: sin_acentos) at the beginning
    /// of a word or of a cell.
    using Words = std::vector<std::vector<std::string>>;
    /// Replaces query and filter together. With words every row of the query is read, once: the query is the
    /// caller's to bound.
    void Narrow(std::string sql, Words words);
    [[nodiscard]] bool filtered() const { return !words_.empty(); }
    /// The rows by this column, from the greatest when they are so from the least; reads them anew.
    void sort_by(int column);
    struct Sorting {
        int column = -1; ///< none: the order that the form has set
        bool descending = false;
    };
    [[nodiscard]] Sorting sorting() const { return sorting_; }
    /// Text columns that hold numbers: 9 comes before 10.
    void SetNumeric(std::vector<std::string> names) { numeric_ = std::move(names); }
    [[nodiscard]] const std::string& OrderBy() const { return order_by_; }
    void SetOrderBy(std::string column) { order_by_ = std::move(column); }
    void SetLayout(std::vector<int> values) { layout_ = std::move(values); } ///< only shapes the display
    /// Columns to show and hand out, in this order; all of the query's when empty.
    void SetColumns(std::vector<std::string> names) { wanted_ = std::move(names); }
    /// Runs the query and shows its rows (fetched in blocks as the list is scrolled).
    void Load();

    [[nodiscard]] const std::vector<std::string>& columns() const { return names_; }
    /// Rows read so far; `more` reads the next block. @return false when there is none
    [[nodiscard]] const std::vector<std::vector<std::string>>& rows() const { return rows_; }
    bool more();
    void read_all();
    [[nodiscard]] bool complete() const { return rs_ == nullptr && rest_.empty(); }
    /// Another number whenever the rows are not the ones before with others behind them.
    [[nodiscard]] int revision() const { return revision_; }
    [[nodiscard]] int current() const { return current_; }
    void set_current(int row);
    /// The person picks a row: Selected with the row's values in column order.
    void pick(int row);
    void cancel();
    /// A key that another control hands on.
    void work(KeyEvent& e) { on_key(e); }
    /// Moves to the first row of which a column begins with the text, else one of a column's words, accents
    /// and case ignored. @return false: no row, the current one stays
    bool search(const std::string& typed);
    /// What has been typed to search with since the last other key.
    [[nodiscard]] const std::string& typed() const { return typed_; }
    [[nodiscard]] bool missed() const { return missed_; } ///< no row has it

    Event<const std::vector<std::string>&> Selected;
    Event<> Cancelled;
    /// What has been typed is in no row; a form that shows rows with it sets the mark back.
    Event<const std::string&, bool&> NotFound;
    /// Another column orders the rows; a form that has loaded them anew says so.
    Event<bool&> Sorted;

protected:
    void on_key(KeyEvent& e) override; ///< arrows, Enter picks, Escape cancels, letters search

private:
    [[nodiscard]] int find_folded(const std::string& wanted, std::size_t from);
    void type(const KeyEvent& e);
    void on_sort_key(KeyEvent& e);
    void fold();
    bool read_block();
    void apply_filter();
    [[nodiscard]] std::string order() const;
    clsConexion* db_ = nullptr;
    std::string sql_, order_by_, loaded_order_, typed_;
    std::vector<int> layout_;
    std::vector<std::string> wanted_, names_;
    std::vector<ColumnKind> kinds_;
    std::vector<std::size_t> sources_;
    std::vector<std::vector<std::string>> rows_;
    std::vector<std::vector<std::string>> read_; ///< all rows, while a filter shows some of them
    std::vector<std::string> folded_;            ///< of all rows: the cells, each after a line end
    std::vector<std::string> numeric_;
    Words words_;
    Sorting sorting_;
    std::unique_ptr<Recordset> rs_;
    std::string rest_; ///< query of all rows, when only the first block has been asked for
    int current_ = -1, revision_ = 0;
    bool loaded_ = false, missed_ = false;
};

} // namespace quorvel::ui
