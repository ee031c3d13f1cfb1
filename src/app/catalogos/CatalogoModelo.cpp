#include "app/catalogos/CatalogoModelo.h"

#include "qt/text.h"
#include "text/numeros.h"

#include <QElapsedTimer>
#include <algorithm>

namespace quorvel::app {

using qt::to_qt;

namespace {

constexpr int UNA_PAGINA = 100; // rows that fill the window
constexpr qint64 UN_RATO_MS = 25;

std::vector<TablaModelo::Columna> columnas_de(const Catalogo& c) {
    std::vector<TablaModelo::Columna> columnas;
    for (const ColumnaCatalogo& x : c.columnas) columnas.push_back({x.titulo, x.clase == Clase::decimal});
    return columnas;
}

} // namespace

CatalogoModelo::CatalogoModelo(clsConexion& db, const Catalogo& c, QObject* parent)
    : TablaModelo(columnas_de(c), parent), db_(db), c_(c) {}

void CatalogoModelo::buscar(const std::string& texto, const std::string& elegido) {
    beginResetModel();
    halladas_.clear();
    filas_ = 0;
    busqueda_.emplace(db_, c_, texto, elegido);
    empezar();
    endResetModel();
    fetchMore({});
}

const FilaCatalogo* CatalogoModelo::fila(int fila) const {
    return fila < 0 || fila >= filas_ ? nullptr : &halladas_[static_cast<std::size_t>(fila)];
}

int CatalogoModelo::poner(const FilaCatalogo& nueva) {
    const bool numero = c_.columnas[0].clase == Clase::numero;
    const auto antes = [&](const FilaCatalogo& a, const FilaCatalogo& b) {
        return numero ? val_entero(a[0]) < val_entero(b[0]) : a[0] < b[0];
    };
    const auto donde = std::ranges::lower_bound(halladas_, nueva, antes);
    const int i = static_cast<int>(donde - halladas_.begin());
    if (donde != halladas_.end() && donde->front() == nueva[0]) {
        *donde = nueva;
        Q_EMIT dataChanged(index(i, 0), index(i, columnCount() - 1));
        return i;
    }
    beginInsertRows({}, i, i);
    halladas_.insert(donde, nueva);
    ++filas_;
    endInsertRows();
    return i;
}

void CatalogoModelo::quitar(int fila) {
    beginRemoveRows({}, fila, fila);
    halladas_.erase(halladas_.begin() + fila);
    --filas_;
    endRemoveRows();
}

int CatalogoModelo::leer_pagina() {
    QElapsedTimer rato;
    rato.start();
    int nuevas = 0;
    while (!busqueda_->terminada() && nuevas < UNA_PAGINA && rato.elapsed() < UN_RATO_MS)
        for (FilaCatalogo& f : busqueda_->seguir()) {
            halladas_.push_back(std::move(f));
            ++nuevas;
        }
    if (busqueda_->terminada()) terminado();
    return nuevas;
}

QString CatalogoModelo::celda(int fila, int columna) const {
    const auto i = static_cast<std::size_t>(columna);
    const std::string& valor = halladas_[static_cast<std::size_t>(fila)][i];
    if (c_.columnas[i].clase != Clase::marca) return to_qt(valor);
    return valor == "1" ? QString::fromUtf8("sí") : QString::fromUtf8("–");
}

/// What is no longer used, and titles, stand back.
TablaModelo::Aspecto CatalogoModelo::aspecto(int fila) const {
    for (std::size_t i = 0; i < c_.columnas.size(); ++i)
        if (std::string_view(c_.columnas[i].nombre) == "activo" &&
            halladas_[static_cast<std::size_t>(fila)][i] != "1")
            return Aspecto::apagado;
    return Aspecto::normal;
}

} // namespace quorvel::app
