#include "app/libros/modelos.h"

#include "qt/text.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <QApplication>
#include <QFont>
#include <QPalette>

namespace quorvel::app {

using namespace libros;

using qt::to_qt;

namespace {
QString fecha(Fecha f) { return to_qt(fecha_dmy(f)); }
QString comprobante_de(const Posicion& p) { return to_qt(p.documento + " " + p.num_docum); }
/// A balance is always said, also when it is nothing.
QString saldo(std::int64_t pesos) { return pesos == 0 ? QString("0") : monto(pesos); }
} // namespace

QString monto(std::int64_t pesos) { return pesos == 0 ? QString() : to_qt(Decimal(pesos).formato("#,##0")); }

TablaModelo::TablaModelo(std::vector<Columna> columnas, QObject* parent)
    : QAbstractTableModel(parent), columnas_(std::move(columnas)) {}

int TablaModelo::columnCount(const QModelIndex&) const { return static_cast<int>(columnas_.size()); }
int TablaModelo::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : filas_; }
bool TablaModelo::canFetchMore(const QModelIndex& parent) const { return !parent.isValid() && hay_mas_; }

void TablaModelo::fetchMore(const QModelIndex&) {
    if (!hay_mas_) return;
    try {
        const int nuevas = leer_pagina(); // the page is there before the view hears of its rows
        if (nuevas <= 0) return;
        beginInsertRows({}, filas_, filas_ + nuevas - 1);
        filas_ += nuevas;
        endInsertRows();
    } catch (const std::exception& e) {
        terminado();
        Q_EMIT fallo(to_qt(e.what()));
    }
}

QVariant TablaModelo::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) return {};
    const Columna& c = columnas_.at(static_cast<std::size_t>(section));
    if (role == Qt::DisplayRole) return QString::fromUtf8(c.titulo);
    if (role == Qt::TextAlignmentRole)
        return int((c.numero ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

QVariant TablaModelo::data(const QModelIndex& index, int role) const {
    const Columna& c = columnas_.at(static_cast<std::size_t>(index.column()));
    switch (role) {
    case Qt::DisplayRole: return celda(index.row(), index.column());
    case Qt::ToolTipRole: return celda(index.row(), index.column());
    case Qt::TextAlignmentRole: return int((c.numero ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case Qt::FontRole: {
        if (aspecto(index.row()) != Aspecto::cabecera) return {};
        QFont negrita;
        negrita.setBold(true);
        return negrita;
    }
    case Qt::ForegroundRole:
        return aspecto(index.row()) == Aspecto::apagado
                   ? QVariant(QApplication::palette().brush(QPalette::PlaceholderText))
                   : QVariant();
    case Qt::BackgroundRole:
        return aspecto(index.row()) == Aspecto::cabecera
                   ? QVariant(QApplication::palette().brush(QPalette::AlternateBase))
                   : QVariant();
    default: return {};
    }
}

// --- journal

DiarioModelo::DiarioModelo(QObject* parent)
    : TablaModelo({{"Fecha"},
                   {"Comprobante"},
                   {"Cuenta"},
                   {"Nombre"},
                   {"Auxiliar"},
                   {"Glosa"},
                   {"Debe", true},
                   {"Haber", true}},
                  parent) {}

void DiarioModelo::vaciar() {
    beginResetModel();
    renglones_.clear();
    indice_.clear();
    filas_ = 0;
    terminado();
    endResetModel();
}

void DiarioModelo::mostrar(clsConexion& db, const PedidoLibro& p) {
    vaciar();
    db_ = &db;
    pedido_ = p;
    empezar();
    fetchMore({});
}

int DiarioModelo::leer_pagina() {
    const auto despues = renglones_.empty() ? std::optional<Posicion>() : renglones_.back().donde;
    auto pagina = leer_diario(*db_, pedido_, despues);
    if (pagina.size() < FILAS_POR_PAGINA) terminado();
    const std::size_t antes = indice_.size();
    for (RenglonDiario& r : pagina) {
        const bool primero = renglones_.empty() || renglones_.back().donde.f_comp != r.donde.f_comp ||
                             renglones_.back().donde.documento != r.donde.documento ||
                             renglones_.back().donde.num_docum != r.donde.num_docum;
        renglones_.push_back(std::move(r));
        if (primero) indice_.push_back({renglones_.size() - 1, true});
        if (renglones_.back().donde.secuencia > 0) indice_.push_back({renglones_.size() - 1, false});
    }
    return static_cast<int>(indice_.size() - antes);
}

std::optional<Posicion> DiarioModelo::comprobante(int fila) const {
    if (fila < 0 || static_cast<std::size_t>(fila) >= indice_.size()) return std::nullopt;
    return renglones_[indice_[static_cast<std::size_t>(fila)].renglon].donde;
}

QString DiarioModelo::celda(int fila, int columna) const {
    const Fila& f = indice_.at(static_cast<std::size_t>(fila));
    const RenglonDiario& r = renglones_[f.renglon];
    if (f.cabecera) switch (columna) {
        case 0: return fecha(r.donde.f_comp);
        case 1: return comprobante_de(r.donde);
        case 3: return to_qt(r.n_documento);
        case 5: return to_qt(r.estado == "X" ? "(ANULADO) " + r.concepto : r.concepto);
        default: return {};
        }
    switch (columna) {
    case 2: return to_qt(r.centro);
    case 3: return to_qt(r.n_centro.empty() ? "(no está en el plan)" : r.n_centro);
    case 4: return to_qt(r.auxiliar);
    case 5: return to_qt(r.glosa);
    case 6: return monto(r.debe);
    case 7: return monto(r.haber);
    default: return {};
    }
}

TablaModelo::Aspecto DiarioModelo::aspecto(int fila) const {
    const Fila& f = indice_.at(static_cast<std::size_t>(fila));
    if (!f.cabecera) return Aspecto::normal;
    return renglones_[f.renglon].estado == "X" ? Aspecto::apagado : Aspecto::cabecera;
}

// --- ledger

CuentasModelo::CuentasModelo(QObject* parent)
    : TablaModelo({{"Cuenta"}, {"Nombre"}, {"Saldo", true}}, parent) {}

void CuentasModelo::mostrar(std::vector<CuentaMayor> cuentas) {
    cuentas_ = std::move(cuentas);
    filtrar(to_qt(filtro_));
}

void CuentasModelo::filtrar(const QString& texto) {
    beginResetModel();
    filtro_ = qt::to_std(texto);
    const std::string buscado = sin_acentos(filtro_);
    vistas_.clear();
    for (std::size_t i = 0; i < cuentas_.size(); ++i) {
        const CuentaMayor& c = cuentas_[i];
        const std::string todo =
            sin_acentos(c.centro + " " + c.n_centro + " " + c.auxiliar + " " + c.n_auxiliar);
        if (buscado.empty() || c.centro.starts_with(buscado) || todo.find(buscado) != std::string::npos)
            vistas_.push_back(i);
    }
    filas_ = static_cast<int>(vistas_.size());
    endResetModel();
}

const CuentaMayor* CuentasModelo::cuenta(int fila) const {
    if (fila < 0 || static_cast<std::size_t>(fila) >= vistas_.size()) return nullptr;
    return &cuentas_[vistas_[static_cast<std::size_t>(fila)]];
}

QString CuentasModelo::celda(int fila, int columna) const {
    const CuentaMayor& c = *cuenta(fila);
    switch (columna) {
    case 0: return to_qt(c.centro);
    case 1: return to_qt(c.auxiliar.empty() ? c.n_centro : c.auxiliar + " " + c.n_auxiliar);
    default: return c.saldo() == 0 ? QString("0") : monto(c.saldo());
    }
}

TablaModelo::Aspecto CuentasModelo::aspecto(int fila) const {
    return cuenta(fila)->saldo() == 0 ? Aspecto::apagado : Aspecto::normal;
}

MovimientosModelo::MovimientosModelo(QObject* parent)
    : TablaModelo({{"Fecha"},
                   {"Comp."},
                   {"Auxiliar"},
                   {"Glosa"},
                   {"Doc."},
                   {"Debe", true},
                   {"Haber", true},
                   {"Saldo", true}},
                  parent) {}

void MovimientosModelo::vaciar() {
    beginResetModel();
    movimientos_.clear();
    filas_ = 0;
    terminado();
    endResetModel();
}

void MovimientosModelo::mostrar(clsConexion& db, const PedidoLibro& p, const CuentaMayor& cuenta) {
    vaciar();
    db_ = &db;
    pedido_ = p;
    seleccion_ = movimientos_de(cuenta, p);
    anterior_ = cuenta.anterior;
    beginInsertRows({}, 0, 0);
    filas_ = 1;
    endInsertRows();
    empezar();
    fetchMore({});
}

int MovimientosModelo::leer_pagina() {
    const auto despues = movimientos_.empty() ? std::optional<Movimiento>() : movimientos_.back();
    auto pagina = leer_movimientos(*db_, pedido_, seleccion_, anterior_, despues);
    if (pagina.size() < FILAS_POR_PAGINA) terminado();
    movimientos_.insert(movimientos_.end(), pagina.begin(), pagina.end());
    return static_cast<int>(pagina.size());
}

std::optional<Posicion> MovimientosModelo::comprobante(int fila) const {
    if (fila < 1 || fila >= filas_) return std::nullopt;
    return movimientos_[static_cast<std::size_t>(fila - 1)].donde;
}

QString MovimientosModelo::celda(int fila, int columna) const {
    if (fila == 0)
        return columna == 3 ? QString("Saldo anterior") : columna == 7 ? saldo(anterior_) : QString();
    const Movimiento& m = movimientos_.at(static_cast<std::size_t>(fila - 1));
    switch (columna) {
    case 0: return fecha(m.donde.f_comp);
    case 1: return comprobante_de(m.donde);
    case 2: return to_qt(m.auxiliar);
    case 3: return to_qt(m.glosa);
    case 4: return to_qt(m.num_ref);
    case 5: return monto(m.debe);
    case 6: return monto(m.haber);
    default: return saldo(m.saldo);
    }
}

TablaModelo::Aspecto MovimientosModelo::aspecto(int fila) const {
    return fila == 0 ? Aspecto::cabecera : Aspecto::normal;
}

// --- balance

BalanceModelo::BalanceModelo(QObject* parent)
    : TablaModelo({{"Cuenta"},
                   {"Nombre"},
                   {"Débitos", true},
                   {"Créditos", true},
                   {"Deudor", true},
                   {"Acreedor", true},
                   {"Activo", true},
                   {"Pasivo", true},
                   {"Pérdida", true},
                   {"Ganancia", true}},
                  parent) {}

void BalanceModelo::mostrar(Balance balance) {
    beginResetModel();
    balance_ = std::move(balance);
    filas_ = balance_.cuentas.empty() ? 0 : static_cast<int>(balance_.cuentas.size()) + 3;
    endResetModel();
}

const LineaBalance& BalanceModelo::linea(int fila) const {
    const auto i = static_cast<std::size_t>(fila);
    const std::size_t n = balance_.cuentas.size();
    if (i < n) return balance_.cuentas[i];
    return i == n ? balance_.sumas : i == n + 1 ? balance_.resultado : balance_.totales;
}

QString BalanceModelo::celda(int fila, int columna) const {
    const LineaBalance& l = linea(fila);
    if (columna == 0) return to_qt(l.centro);
    if (columna == 1) return to_qt(l.nombre.empty() ? "(no está en el plan)" : l.nombre);
    return monto(columnas_balance(l).at(static_cast<std::size_t>(columna - 2)));
}

TablaModelo::Aspecto BalanceModelo::aspecto(int fila) const {
    return static_cast<std::size_t>(fila) < balance_.cuentas.size() ? Aspecto::normal : Aspecto::cabecera;
}

} // namespace quorvel::app
