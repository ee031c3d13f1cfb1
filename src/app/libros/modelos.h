#pragma once
#include "libros/balance.h"
#include "libros/diario.h"
#include "libros/mayor.h"

#include <QAbstractTableModel>

namespace quorvel::app {

/// A read-only table of texts: columns with titles, numbers to the right, rows that are read when they come
/// into sight.
class TablaModelo : public QAbstractTableModel {
    Q_OBJECT
public:
    struct Columna {
        const char* titulo;
        bool numero = false;
    };
    enum class Aspecto { normal, cabecera, apagado };
    explicit TablaModelo(std::vector<Columna> columnas, QObject* parent = nullptr);
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

Q_SIGNALS:
    /// The database refused to give more rows.
    void fallo(const QString& texto);

protected:
    [[nodiscard]] virtual QString celda(int fila, int columna) const = 0;
    [[nodiscard]] virtual Aspecto aspecto(int fila) const = 0;
    /// Reads a page. @return how many rows it brought @throws ErrorSesion
    virtual int leer_pagina() { return 0; }
    void terminado() { hay_mas_ = false; }
    void empezar() { hay_mas_ = true; }
    int filas_ = 0;

private:
    std::vector<Columna> columnas_;
    bool hay_mas_ = false;
};

/// The journal: a row for each voucher's header and one for each of its lines.
class DiarioModelo final : public TablaModelo {
    Q_OBJECT
public:
    explicit DiarioModelo(QObject* parent = nullptr);
    void mostrar(clsConexion& db, const libros::PedidoLibro& p);
    void vaciar();
    /// The voucher that a row belongs to.
    [[nodiscard]] std::optional<libros::Posicion> comprobante(int fila) const;

protected:
    [[nodiscard]] QString celda(int fila, int columna) const override;
    [[nodiscard]] Aspecto aspecto(int fila) const override;
    int leer_pagina() override;

private:
    struct Fila {
        std::size_t renglon;
        bool cabecera;
    };
    clsConexion* db_ = nullptr;
    libros::PedidoLibro pedido_;
    std::vector<libros::RenglonDiario> renglones_;
    std::vector<Fila> indice_;
};

/// Accounts of the ledger, those that a typed text leaves.
class CuentasModelo final : public TablaModelo {
    Q_OBJECT
public:
    explicit CuentasModelo(QObject* parent = nullptr);
    void mostrar(std::vector<libros::CuentaMayor> cuentas);
    void filtrar(const QString& texto);
    [[nodiscard]] const libros::CuentaMayor* cuenta(int fila) const;

protected:
    [[nodiscard]] QString celda(int fila, int columna) const override;
    [[nodiscard]] Aspecto aspecto(int fila) const override;

private:
    std::vector<libros::CuentaMayor> cuentas_;
    std::vector<std::size_t> vistas_;
    std::string filtro_;
};

/// Movements of one account, the balance before the period first.
class MovimientosModelo final : public TablaModelo {
    Q_OBJECT
public:
    explicit MovimientosModelo(QObject* parent = nullptr);
    void mostrar(clsConexion& db, const libros::PedidoLibro& p, const libros::CuentaMayor& cuenta);
    void vaciar();
    /// The voucher of a movement; nothing for the balance before the period.
    [[nodiscard]] std::optional<libros::Posicion> comprobante(int fila) const;

protected:
    [[nodiscard]] QString celda(int fila, int columna) const override;
    [[nodiscard]] Aspecto aspecto(int fila) const override;
    int leer_pagina() override;

private:
    clsConexion* db_ = nullptr;
    libros::PedidoLibro pedido_;
    libros::SeleccionMayor seleccion_;
    std::int64_t anterior_ = 0;
    std::vector<libros::Movimiento> movimientos_;
};

class BalanceModelo final : public TablaModelo {
    Q_OBJECT
public:
    explicit BalanceModelo(QObject* parent = nullptr);
    void mostrar(libros::Balance balance);
    /// The account of a line, "" for the sums.
    [[nodiscard]] QString cuenta(int fila) const { return celda(fila, 0); }

protected:
    [[nodiscard]] QString celda(int fila, int columna) const override;
    [[nodiscard]] Aspecto aspecto(int fila) const override;

private:
    [[nodiscard]] const libros::LineaBalance& linea(int fila) const;
    libros::Balance balance_;
};

/// "1.234.567", "" for 0.
[[nodiscard]] QString monto(std::int64_t pesos);

} // namespace quorvel::app
