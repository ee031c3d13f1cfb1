#pragma once
#include "catalogos/catalogo.h"

#include <QDialog>
#include <memory>
#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace quorvel::app {

class CatalogoModelo;
class Formulario;

/// A master table as a person keeps it: the list with its search, and the row that is looked at, changed or
/// made. What is being changed is saved or left before another row is looked at. Has a session of its own.
class VentanaCatalogo : public QDialog {
    Q_OBJECT
public:
    /// @param puede whether the person may change it; else the window only shows @throws ErrorSesion
    VentanaCatalogo(const std::string& conexion, const Catalogo& c, bool puede, QWidget* parent = nullptr);
    ~VentanaCatalogo() override;
    /// Asks for one new row and closes when it is there.
    /// @param escrito what was typed to find it @param elegido the choice that the list was narrowed to
    /// @return nothing when cancelled
    [[nodiscard]] std::optional<FilaCatalogo> pedir_nueva(const std::string& escrito,
                                                          const std::string& elegido);
    /// Whether something was saved or removed.
    [[nodiscard]] bool cambiado() const { return cambiado_; }
    /// Escape and the cross: first what is being changed is left, then the window.
    void reject() override;

private:
    void construir();
    void construir_ficha();
    void atajos();
    QWidget* caja_de(const ColumnaCatalogo& x);
    void buscar();
    void seguir();
    void nueva();
    void mostrar(const FilaCatalogo& fila, bool es_nueva);
    void mostrar_actual();
    void tocado();
    void grabar();
    void borrar();
    void dejar_quieto(bool quieto);
    void decir(const std::string& texto);
    [[nodiscard]] FilaCatalogo leer() const;
    [[nodiscard]] std::string elegido() const;
    template <class F> void atender(F&& accion);

    std::unique_ptr<clsConexion> db_;
    const Catalogo& c_;
    bool puede_, una_sola_ = false, cambiado_ = false, tocada_ = false, mostrando_ = false;
    FilaCatalogo antes_; ///< the row as it was read; empty: a new one
    FilaCatalogo guardada_;
    CatalogoModelo* modelo_;
    Formulario* forma_ = nullptr;
    std::vector<QWidget*> cajas_; ///< one for each column
    QLineEdit* buscar_;
    QComboBox* elegido_;
    QTableView* lista_;
    QPushButton *nueva_, *grabar_, *borrar_;
    QLabel* estado_;
};

} // namespace quorvel::app
