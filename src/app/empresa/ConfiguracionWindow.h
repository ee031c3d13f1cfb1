#pragma once
#include "empresa/configuracion_anual.h"

#include <QDialog>
#include <map>
#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;

namespace quorvel::app {

class CajaCuenta;
class Formulario;

/// Configuration of a company's accounting year: entry period, the accounts that the books post to, the
/// captions under a voucher. Has a session of its own.
class ConfiguracionWindow : public QDialog {
    Q_OBJECT
public:
    /// @throws ErrorSesion
    ConfiguracionWindow(const std::string& conexion, int empresa, const std::string& n_empresa, Fecha hoy,
                        QWidget* parent = nullptr);
    ~ConfiguracionWindow() override;
    /// Checks and writes. @return false when a remark keeps it from being saved
    bool grabar();

private:
    QWidget* construir_cuentas();
    QWidget* construir_anio();
    QLayout* construir_botones();
    void mostrar(int anio);
    [[nodiscard]] ConfiguracionAnual leer() const;
    bool revisar();

    std::unique_ptr<clsConexion> db_;
    int empresa_;
    QComboBox* anios_;
    QLineEdit *desde_, *hasta_;
    std::map<std::string, CajaCuenta*> cuentas_;
    QLineEdit *elaborado_, *revisado_, *aprobado_;
    Formulario *izquierda_, *derecha_;
    QLabel *cierre_, *estado_;
};

} // namespace quorvel::app
