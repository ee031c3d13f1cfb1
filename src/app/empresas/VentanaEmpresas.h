#pragma once
#include "app/empresas/ListaEmpresas.h"
#include "dbtools/base.h"

#include <QDialog>
#include <filesystem>

class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

namespace quorvel::app {

/// Companies of all databases of a directory: searched by name or RUT as one types, and how each is doing.
class VentanaEmpresas : public QDialog {
    Q_OBJECT
public:
    /// @param directorio connection of the database that has it @throws ErrorSesion
    explicit VentanaEmpresas(const std::string& directorio, QWidget* parent = nullptr);
    void buscar(const QString& texto);
    /// Reads database after database; the button stops it.
    void ver_estado();
    /// The company that was chosen when the dialog was accepted.
    [[nodiscard]] const ListaEmpresas::Fila& elegida() const;

private:
    void mostrar_seleccion();

    std::unique_ptr<dbtools::Base> directorio_;
    QLineEdit* texto_;
    QTableView* tabla_;
    QLabel* aviso_;
    QPushButton *estado_, *abrir_;
    ListaEmpresas* lista_;
    QSortFilterProxyModel* orden_;
    bool leyendo_ = false, parar_ = false;
};

/// Connection of the directory that a person's program uses: the first line of "directorio.txt" in the
/// personal folder, or the environment's QUORVEL_DIRECTORIO; empty: there is none.
[[nodiscard]] std::string conexion_del_directorio(const std::filesystem::path& carpeta);

} // namespace quorvel::app
