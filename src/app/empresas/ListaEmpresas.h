#pragma once
#include <QAbstractTableModel>
#include <optional>
#include <string>
#include <vector>

namespace quorvel::app {

/// Companies of several databases, one a row; how each is doing stays empty until somebody asks.
class ListaEmpresas final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Columna { codigo, rut, nombre, descuadrados, meses, actividad, base, COLUMNAS };
    struct Fila {
        int empresa = 0;
        std::string conexion, nombre, rut;
        std::optional<long> descuadrados, meses;
        std::string actividad; ///< dd/mm/yyyy
    };
    using QAbstractTableModel::QAbstractTableModel;

    void poner(std::vector<Fila> filas);
    void agregar(const std::vector<Fila>& filas);
    [[nodiscard]] const Fila& fila(int n) const { return filas_.at(static_cast<std::size_t>(n)); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    /// Qt::UserRole is what rows are sorted by.
    [[nodiscard]] QVariant data(const QModelIndex& celda, int papel) const override;
    [[nodiscard]] QVariant headerData(int seccion, Qt::Orientation orientacion, int papel) const override;

private:
    std::vector<Fila> filas_;
};

} // namespace quorvel::app
