#pragma once
#include "empresa/empresa.h"

#include <QDialog>
#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;

namespace quorvel::app {

class Formulario;

/// Asks for what a new company needs; everything is checked before anything is written.
class NuevaEmpresa : public QDialog {
    Q_OBJECT
public:
    /// @param conexion a database with its tables @throws ErrorSesion
    NuevaEmpresa(const std::string& conexion, Fecha hoy, QWidget* parent = nullptr);
    ~NuevaEmpresa() override;
    /// Checks and writes. @return false when a remark keeps it from being created
    bool crear();
    /// Takes the chart from a file, as the button does.
    void leer_archivo(const QString& archivo);
    [[nodiscard]] int codigo() const;

private:
    enum Origen { de_la_base, plantilla, archivo };
    QWidget* construir_plan();
    void elegir_origen();
    void mostrar_errores(const QStringList& errores);
    void proponer_periodo();
    [[nodiscard]] EmpresaNueva leer() const;
    bool revisar();

    std::unique_ptr<clsConexion> db_;
    std::optional<Plan> plan_;
    QLineEdit *codigo_, *nombre_, *rut_, *direccion_, *giro_, *anio_, *desde_, *hasta_, *usuario_;
    QComboBox* origen_;
    QLabel *resumen_, *estado_;
    QListWidget* errores_;
    Formulario* forma_;
};

} // namespace quorvel::app
