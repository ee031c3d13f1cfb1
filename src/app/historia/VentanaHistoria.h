#pragma once
#include "historia/version.h"
#include "platform/db/clsConexion.h"
#include "voucher/comprobante.h"

#include <QDialog>
#include <map>
#include <memory>
#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace quorvel::app {

/// Versions of a voucher, newest first, two of them side by side by cell; and the vouchers that were deleted
/// or cut. Has a session of its own.
class VentanaHistoria : public QDialog {
    Q_OBJECT
public:
    /// @param clave of the shown voucher; none lists the deleted ones @throws ErrorSesion
    VentanaHistoria(const std::string& conexion, int empresa, int usuario, const std::string& n_empresa,
                    const std::optional<Clave>& clave, QWidget* parent = nullptr);
    ~VentanaHistoria() override;
    /// The voucher that the person wants on the screen, once the window was accepted.
    [[nodiscard]] const std::optional<Comprobante>& elegido() const { return elegido_; }

private:
    QWidget* construir_arriba();
    QWidget* construir_comparacion();
    QLayout* construir_abajo();
    QTableWidget* tabla(const char* nombre, const QStringList& titulos, int elastica);
    void listar();
    void elegir_fila();
    void comparar();
    void llevar();
    void deshacer();
    /// Runs what reads the database and tells what went wrong.
    template <class F> void intentar(F&& f);
    [[nodiscard]] const Version* actual() const;
    [[nodiscard]] QString quien(int usuario) const;

    std::unique_ptr<clsConexion> db_;
    int empresa_, usuario_;
    std::string clave_;
    std::map<int, std::string> usuarios_;
    std::vector<Version> filas_, anteriores_;
    std::optional<Comprobante> elegido_;
    QComboBox *cuales_, *contra_;
    QTableWidget *versiones_, *celdas_;
    QCheckBox* cambios_;
    QLabel *titulo_, *estado_;
    QPushButton *llevar_, *deshacer_;
};

} // namespace quorvel::app
