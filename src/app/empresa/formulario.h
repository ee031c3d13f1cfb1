#pragma once
#include "empresa/configuracion_anual.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <map>

namespace quorvel::app {

/// A form whose remarks stand under the field that they are about, told by a sign and in words.
class Formulario : public QWidget {
    Q_OBJECT
public:
    explicit Formulario(QWidget* parent = nullptr);
    /// @param campo name by which remarks find the field
    void campo(const char* campo, const QString& rotulo, QWidget* widget);
    /// Shows remarks; the first grave one gets the focus. @return whether one is grave
    bool observar(const std::vector<Observacion>& observaciones);
    /// Remarks that belong to no field of the form.
    [[nodiscard]] const QStringList& sin_campo() const { return sin_campo_; }

private:
    struct Campo {
        QWidget* widget;
        QLabel* nota;
    };
    QFormLayout* forma_;
    std::map<std::string, Campo> campos_;
    QStringList sin_campo_;
};

/// Enter in this field goes to the next one, as Tab does, and starts nothing.
void enter_sigue(QWidget& campo);

/// Chooses an account of the chart by typing code or name, accents and case ignored; empty is none.
class CajaCuenta : public QComboBox {
    Q_OBJECT
public:
    explicit CajaCuenta(const std::vector<CuentaImputable>& cuentas, QWidget* parent = nullptr);
    void poner(const std::string& codigo);
    /// The chosen or typed code, "" for none.
    [[nodiscard]] std::string codigo() const;
};

} // namespace quorvel::app
