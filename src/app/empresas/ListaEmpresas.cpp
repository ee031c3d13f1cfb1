#include "app/empresas/ListaEmpresas.h"

#include "qt/text.h"

namespace quorvel::app {

using qt::to_qt;

namespace {

constexpr const char* TITULOS[] = {
    "Nº", "RUT", "Empresa", "Descuadrados", "Meses sin cerrar", "Última actividad", "Base de datos"};
static_assert(std::size(TITULOS) == ListaEmpresas::COLUMNAS);

bool numerica(int columna) {
    return columna == ListaEmpresas::codigo || columna == ListaEmpresas::descuadrados ||
           columna == ListaEmpresas::meses;
}

QVariant numero(const std::optional<long>& n) {
    return n ? QVariant::fromValue(static_cast<qlonglong>(*n)) : QVariant();
}

/// A day in an order that can be sorted.
QString ordenable(const std::string& dia) {
    return dia.size() < 10 ? QString() : to_qt(dia.substr(6) + dia.substr(3, 2) + dia.substr(0, 2));
}

} // namespace

void ListaEmpresas::poner(std::vector<Fila> filas) {
    beginResetModel();
    filas_ = std::move(filas);
    endResetModel();
}

void ListaEmpresas::agregar(const std::vector<Fila>& filas) {
    if (filas.empty()) return;
    const int antes = rowCount();
    beginInsertRows({}, antes, antes + static_cast<int>(filas.size()) - 1);
    filas_.insert(filas_.end(), filas.begin(), filas.end());
    endInsertRows();
}

int ListaEmpresas::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(filas_.size());
}

int ListaEmpresas::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : COLUMNAS; }

QVariant ListaEmpresas::data(const QModelIndex& celda, int papel) const {
    if (papel == Qt::TextAlignmentRole && numerica(celda.column()))
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    const bool orden = papel == Qt::UserRole;
    if (papel != Qt::DisplayRole && papel != Qt::ToolTipRole && !orden) return {};
    const Fila& f = fila(celda.row());
    switch (celda.column()) {
    case codigo: return f.empresa;
    case rut: return to_qt(f.rut);
    case nombre: return to_qt(f.nombre);
    case descuadrados: return numero(f.descuadrados);
    case meses: return numero(f.meses);
    case actividad: return orden ? ordenable(f.actividad) : to_qt(f.actividad);
    default: return to_qt(f.conexion);
    }
}

QVariant ListaEmpresas::headerData(int seccion, Qt::Orientation orientacion, int papel) const {
    if (orientacion != Qt::Horizontal || papel != Qt::DisplayRole) return {};
    return QString::fromUtf8(TITULOS[seccion]);
}

} // namespace quorvel::app
