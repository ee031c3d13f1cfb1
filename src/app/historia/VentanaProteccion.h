#pragma once
#include "platform/db/clsConexion.h"

#include <QDialog>
#include <array>
#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;

namespace quorvel::app {

/// What a company protects beyond the checks of a voucher: its history, closed years, single months. Has a
/// session of its own.
class VentanaProteccion : public QDialog {
    Q_OBJECT
public:
    /// @throws ErrorSesion
    VentanaProteccion(const std::string& conexion, int empresa, int usuario, const std::string& n_empresa,
                      Fecha hoy, QWidget* parent = nullptr);
    ~VentanaProteccion() override;
    /// Writes what was changed. @return false and the window says why
    bool grabar();

private:
    QWidget* construir_meses(Fecha hoy);
    void mostrar_meses();

    std::unique_ptr<clsConexion> db_;
    int empresa_, usuario_;
    QCheckBox *historia_, *cierre_;
    QComboBox* anio_;
    std::array<QCheckBox*, 12> meses_{};
    QLabel* estado_;
};

} // namespace quorvel::app
