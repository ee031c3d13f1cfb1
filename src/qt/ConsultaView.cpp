#include "qt/ConsultaView.h"

#include "platform/ui/form.h"
#include "qt/row_height.h"
#include "qt/text.h"
#include "text/numeros.h"

#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <numeric>

namespace quorvel::qt {

namespace {

struct ColumnRow {
    const char *name, *caption;
    bool amount = false;
};
/// Columns as people read them.
constexpr ColumnRow COLUMNS[] = {
    {"centro", "Código"},
    {"n_centro", "Nombre"},
    {"auxiliar", "Código"},
    {"n_auxiliar", "Nombre"},
    {"f_comp", "Fecha"},
    {"documento", "Documento"},
    {"num_docum", "Número"},
    {"concepto", "Glosa"},
    {"libro", "Libro"},
    {"rut_persona", "RUT"},
    {"nombre", "Nombre"},
    {"banco", "Banco"},
    {"cuenta", "Cuenta"},
    {"otro_impuesto", "Código"},
    {"descripcion", "Descripción"},
    {"tasa", "Tasa", true},
    {"estado", "Estado"},
    {"num_ref", "Num. Doc"},
    {"rut", "RUT"},
    {"tipo", "Tipo"},
    {"debe", "Debe", true},
    {"doc_libro", "Doc."},
    {"n_documento", "Nombre"},
    {"usuario", "Usuario"},
    {"haber", "Haber", true},
    {"diferencia", "Diferencia", true},
    {"t_debe", "Debe", true},
    {"t_haber", "Haber", true},
    {"subsistema", "Subsistema"},
};

/// A column that is not in the table keeps the database's own spelling.
ColumnRow column_row(const std::string& name) {
    for (const ColumnRow& row : COLUMNS)
        if (name == row.name) return row;
    return {name.c_str(), name.c_str()};
}

QString amount_text(const std::string& text) {
    const bool decimals = text.find('.') != std::string::npos;
    return text.empty() ? QString() : to_qt(formato(valnumerobase(text), decimals ? "#,##0.00" : "#,##0"));
}

} // namespace

int ConsultaModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ConsultaModel::data(const QModelIndex& index, int role) const {
    if (list_ == nullptr || !index.isValid()) return {};
    if (role == Qt::TextAlignmentRole) return headerData(index.column(), Qt::Horizontal, role);
    if (role != Qt::DisplayRole) return {};
    const auto& rows = list_->rows();
    const auto row = static_cast<std::size_t>(index.row());
    const auto col = static_cast<std::size_t>(index.column());
    if (row >= rows.size() || col >= rows[row].size()) return {};
    if (column_row(columns_[col]).amount) return amount_text(rows[row][col]);
    return to_qt(rows[row][col]).trimmed();
}

QVariant ConsultaModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= columnCount()) return {};
    const ColumnRow column = column_row(columns_[static_cast<std::size_t>(section)]);
    if (role == Qt::DisplayRole) return QString::fromUtf8(column.caption);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue((column.amount ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

bool ConsultaModel::canFetchMore(const QModelIndex& parent) const {
    return list_ != nullptr && !parent.isValid() && !exhausted_ && rows_ > 0;
}

void ConsultaModel::fetchMore(const QModelIndex&) {
    if (fetching_) return;
    fetching_ = true;
    list_->form().atender([this] { exhausted_ = !list_->more(); });
    fetching_ = false;
    sync();
}

void ConsultaModel::sync() {
    if (fetching_) return;
    const auto& rows = list_->rows();
    const int count = static_cast<int>(rows.size());
    const bool grown = revision_ == list_->revision();
    if (grown && count == rows_) return;
    if (grown) {
        beginInsertRows({}, rows_, count - 1);
        rows_ = count;
        endInsertRows();
        return;
    }
    beginResetModel();
    revision_ = list_->revision();
    columns_ = list_->columns();
    rows_ = count;
    exhausted_ = false;
    endResetModel();
}

ConsultaView::ConsultaView(QWidget* parent) : QTableView(parent), model_(new ConsultaModel(this)) {
    setModel(model_);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    fit_rows(*this);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
        if (list_ != nullptr) list_->form().atender([&] { list_->sort_by(section); });
    });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
        if (!fitting_ && list_ != nullptr && horizontalHeader()->cursor().shape() == Qt::SplitHCursor)
            keep_widths();
    });
}

void ConsultaView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange) return;
    fit_rows(*this);
    fitted_width_ = 0;
    if (list_ != nullptr) fit_columns();
}

void ConsultaView::attach(ui::ctlConsulta& list) {
    list_ = &list;
    model_->attach(&list);
    sync();
}

void ConsultaView::detach() {
    list_ = nullptr;
    model_->attach(nullptr);
}

void ConsultaView::sync() {
    model_->sync();
    const QModelIndex wanted = model_->index(list_->current(), 0);
    if (wanted != currentIndex() || !selectionModel()->isRowSelected(list_->current())) {
        setCurrentIndex(wanted);
        if (wanted.isValid()) selectRow(wanted.row());
    }
    if (wanted.isValid()) scrollTo(wanted);
    const auto [column, descending] = list_->sorting();
    horizontalHeader()->setSortIndicatorShown(column >= 0);
    if (column >= 0)
        horizontalHeader()->setSortIndicator(column, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    fit_columns();
    show_typed();
}

void ConsultaView::show_typed() {
    auto* line = window()->findChild<QLabel*>("lbl_static_ayuda");
    if (line == nullptr) return;
    if (help_.isEmpty()) help_ = line->text();
    const QString typed = to_qt(list_->typed());
    QFont font = line->font();
    font.setBold(!typed.isEmpty());
    line->setFont(font);
    line->setText(typed.isEmpty() ? help_
                                  : QString::fromUtf8(list_->missed() ? "⚠ Buscar: %1  ·  sin coincidencias"
                                                                      : "Buscar: %1")
                                        .arg(typed));
}

void ConsultaView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (list_ == nullptr || model_->rowCount() > 0) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const QString empty = property("empty_text").toString();
    painter.drawText(viewport()->rect().adjusted(20, 0, -20, 0), Qt::AlignCenter | Qt::TextWordWrap,
                     empty.isEmpty() || list_->missed() ? "Sin resultados" : empty);
}

/// Widths follow the first rows that came, later blocks do not make the columns jump; the longest columns
/// give way until all are in sight.
void ConsultaView::fit_columns() {
    const int columns = model_->columnCount();
    const bool same_list = columns == fitted_columns_ && (fitted_rows_ || model_->rowCount() == 0);
    const bool same_room = sized_by_hand_ || fitted_width_ == viewport()->width();
    const bool emptied = same_list && fitted_rows_ && model_->rowCount() == 0;
    if (columns == 0 || emptied || (same_list && same_room)) return;
    fitted_columns_ = columns;
    fitted_rows_ = model_->rowCount() > 0;
    fitted_width_ = viewport()->width();
    std::vector<int> wanted;
    for (int i = 0; i < columns; ++i)
        wanted.push_back(std::max(sizeHintForColumn(i) + 10, horizontalHeader()->sectionSizeHint(i) + 2));
    constexpr int NARROWEST = 110;
    int widest = std::max(NARROWEST, *std::ranges::max_element(wanted));
    const auto total = [&] {
        return std::accumulate(wanted.begin(), wanted.end(), 0,
                               [&](int sum, int width) { return sum + std::min(width, widest); });
    };
    while (widest > NARROWEST && total() > fitted_width_) --widest;
    fitting_ = true;
    const QStringList kept = widths().split('#', Qt::SkipEmptyParts);
    for (int i = 0; i < columns; ++i)
        setColumnWidth(i, kept.size() == columns ? std::max(kept[i].toInt(), 20)
                                                 : std::min(wanted[static_cast<std::size_t>(i)], widest));
    fitting_ = false;
}

QString ConsultaView::widths() const {
    const auto& all = list_->form().escritorio().list_widths;
    const auto mine = all.find(list_->form().name());
    return mine == all.end() ? QString() : to_qt(mine->second);
}

void ConsultaView::keep_widths() {
    sized_by_hand_ = true;
    QString text;
    for (int i = 0; i < model_->columnCount(); ++i) text += QString::number(columnWidth(i)) + '#';
    list_->form().escritorio().list_widths[list_->form().name()] = to_std(text);
}

void ConsultaView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (list_ != nullptr) fit_columns();
}

void ConsultaView::mousePressEvent(QMouseEvent* event) {
    if (list_ == nullptr || event->button() != Qt::LeftButton) return;
    const QModelIndex cell = indexAt(event->position().toPoint());
    if (cell.isValid()) list_->form().atender([&] { list_->set_current(cell.row()); });
}

void ConsultaView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex cell = indexAt(event->position().toPoint());
    if (list_ != nullptr && cell.isValid()) list_->form().atender([&] { list_->pick(cell.row()); });
}

} // namespace quorvel::qt
