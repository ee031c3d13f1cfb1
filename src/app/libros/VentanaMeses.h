#pragma once
#include "libros/pendientes.h"
#include "screen/borrador.h"

#include <QDialog>
#include <functional>
#include <memory>

class QLabel;
class QSpinBox;
class QTreeWidget;
class QTreeWidgetItem;

namespace quorvel::app {

/// What is left to do in each month of a year: vouchers that do not balance or are not finished, missing
/// numbers, drafts on this machine. Enter opens the voucher that a row names. Has a session of its own.
class VentanaMeses : public QDialog {
    Q_OBJECT
public:
    /// What the rows lead to.
    struct Acciones {
        std::function<void(const libros::Posicion&)> abrir;
        std::function<std::vector<BorradorLibre>()> borradores;
        std::function<void(const std::filesystem::path&)> recuperar;
    };
    /// @throws ErrorSesion
    VentanaMeses(const std::string& conexion, int empresa, const std::string& n_empresa, Fecha hoy,
                 Acciones acciones, QWidget* parent = nullptr);
    ~VentanaMeses() override;
    void actualizar();

private:
    QTreeWidgetItem* agregar_mes(int mes, const libros::MesRevisado& revisado);
    int agregar_borradores(const std::array<QTreeWidgetItem*, 13>& meses);
    void abrir(QTreeWidgetItem* fila);
    std::unique_ptr<clsConexion> db_;
    int empresa_;
    Fecha hoy_;
    Acciones acciones_;
    QSpinBox* anio_;
    QTreeWidget* lista_;
    QLabel* pie_;
};

} // namespace quorvel::app
