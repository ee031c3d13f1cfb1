#pragma once
#include "app/libros/modelos.h"
#include "catalogos/filas.h"

namespace quorvel::app {

/// The rows of a master table that have what was typed, read slice by slice while nobody waits.
class CatalogoModelo final : public TablaModelo {
    Q_OBJECT
public:
    CatalogoModelo(clsConexion& db, const Catalogo& c, QObject* parent = nullptr);
    void buscar(const std::string& texto, const std::string& elegido);
    /// Whether there may be more to find.
    [[nodiscard]] bool hay_mas() const { return canFetchMore({}); }
    [[nodiscard]] const FilaCatalogo* fila(int fila) const;
    /// The row as it is stored now: a new one takes its place in the order of the codes. @return where it is
    int poner(const FilaCatalogo& fila);
    void quitar(int fila);

protected:
    [[nodiscard]] QString celda(int fila, int columna) const override;
    [[nodiscard]] Aspecto aspecto(int fila) const override;
    int leer_pagina() override;

private:
    clsConexion& db_;
    const Catalogo& c_;
    std::optional<BusquedaCatalogo> busqueda_;
    std::vector<FilaCatalogo> halladas_;
};

} // namespace quorvel::app
