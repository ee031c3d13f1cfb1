#pragma once
#include "libros/exportar.h"
#include "voucher/comprobante.h"

#include <QDialog>
#include <filesystem>
#include <functional>
#include <memory>

class QAbstractItemModel;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QTabWidget;
class QTableView;

namespace quorvel::app {

class Grafico;
class DiarioModelo;
class CuentasModelo;
class MovimientosModelo;
class BalanceModelo;

/// A read-only look at what was entered: journal, ledger, balance and monthly totals of a period, on screen,
/// as PDF and as CSV. Has a session of its own.
class VentanaLibros : public QDialog {
    Q_OBJECT
public:
    /// @throws ErrorSesion
    VentanaLibros(const std::string& conexion, int empresa, const std::string& n_empresa, Fecha hoy,
                  QWidget* parent = nullptr);
    ~VentanaLibros() override;
    /// Brings a book to the front and reads it.
    void abrir(libros::Libro libro);
    [[nodiscard]] libros::PedidoLibro pedido() const;
    /// Writes what is shown to a file; the ending (".pdf", ".csv") decides. @return false and the reason
    bool exportar(const QString& archivo, QString& motivo);

Q_SIGNALS:
    /// The person wants to see the voucher of a line.
    void comprobante_pedido(const Clave& clave);

private:
    QWidget* construir_filtro();
    QWidget* construir_mayor();
    QTableView* tabla(QAbstractItemModel* modelo, const char* nombre, const QList<int>& anchos, int elastica);
    void elegir_periodo(int cual);
    void actualizar();
    void leer(libros::Libro libro);
    void mostrar_cuenta(int fila);
    void decir(const QString& texto, bool problema = false);
    void al_elegir(QTableView* vista, std::function<void(int fila)> accion);
    void ver_comprobante(const std::optional<libros::Posicion>& donde);
    void ver_mayor_de(int fila);
    void pedir_archivo(const char* filtro, const char* ending);

    std::unique_ptr<clsConexion> db_;
    int empresa_, anio_;
    Fecha hoy_;
    QDateEdit *desde_, *hasta_;
    QComboBox *periodo_, *norma_;
    QCheckBox *sin_cierre_, *por_auxiliar_;
    QTabWidget* paginas_;
    QLineEdit* filtro_;
    QTableView *diario_vista_, *cuentas_vista_, *movimientos_vista_, *balance_vista_;
    QLabel *estado_, *titulo_cuenta_;
    DiarioModelo* diario_;
    CuentasModelo* cuentas_;
    MovimientosModelo* movimientos_;
    BalanceModelo* balance_;
    Grafico* grafico_;
    libros::PedidoLibro leido_[4];
};

} // namespace quorvel::app
