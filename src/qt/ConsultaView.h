#pragma once
#include "platform/ui/ctlConsulta.h"

#include <QAbstractTableModel>
#include <QTableView>
#include <vector>

class QLabel;

namespace quorvel::qt {

/// Rows of a ctlConsulta; more of them are read when the view scrolls to the end.
class ConsultaModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ConsultaModel(QObject* parent) : QAbstractTableModel(parent) {}
    void attach(ui::ctlConsulta* list) { list_ = list; }
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    /// Rows were read or replaced.
    void sync();

private:
    ui::ctlConsulta* list_ = nullptr;
    int revision_ = -1;
    std::vector<std::string> columns_;
    int rows_ = 0;
    bool exhausted_ = false, fetching_ = false;
};

/// Paints a ctlConsulta: pick with Enter or a double click, type to search. What is being searched for stands
/// in the window's line of help, the label lbl_static_ayuda.
class ConsultaView : public QTableView {
    Q_OBJECT
public:
    explicit ConsultaView(QWidget* parent = nullptr);
    void attach(ui::ctlConsulta& list);
    /// The list goes; the view may still get events until it goes too.
    void detach();
    void sync();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent*) override {}
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fit_columns();
    void show_typed();
    [[nodiscard]] QString widths() const; ///< that a person gave this list before
    void keep_widths();
    ui::ctlConsulta* list_ = nullptr;
    ConsultaModel* model_;
    QString help_; ///< of the line of help while nothing is searched
    int fitted_columns_ = 0, fitted_width_ = 0;
    bool fitted_rows_ = false, fitting_ = false;
    bool sized_by_hand_ = false; ///< the person has made a column wider or narrower
};

} // namespace quorvel::qt
