#pragma once
#include "app/libros/VentanaLibros.h"
#include "app/sesion_app.h"

#include <QObject>
#include <QPointer>

class QMenuBar;

namespace quorvel {

/// How the voucher screen was left.
enum class FinPantalla { salir, otra_empresa, reabrir, error };

/// What the host application adds to the voucher screen's window: books, configuration, drafts, another
/// company.
class Anfitrion : public QObject {
    Q_OBJECT
public:
    Anfitrion(SesionApp& sesion, qt::QtEscritorio& escritorio, Eleccion_inicial eleccion, Fecha hoy);
    ~Anfitrion() override;
    /// Tells of drafts that a crash or a lost server left behind, and brings the chosen one back.
    void ofrecer_borradores();
    /// How the screen was left.
    [[nodiscard]] FinPantalla como_termino() const { return final_; }
    void ver_libro(Libro libro);

private:
    void agregar_menus(QMenuBar& barra);
    void configurar();
    void dejar(FinPantalla como);
    [[nodiscard]] QWidget* ventana() const;

    SesionApp& sesion_;
    qt::QtEscritorio& escritorio_;
    Eleccion_inicial eleccion_;
    Fecha hoy_;
    QPointer<VentanaLibros> libros_;
    FinPantalla final_ = FinPantalla::salir;
};

/// Shows the voucher screen until it is left; a changed configuration opens it again with what was on it.
[[nodiscard]] FinPantalla trabajar(const Eleccion_inicial& eleccion);

} // namespace quorvel
