#pragma once
#include "app/libros/VentanaLibros.h"
#include "app/libros/VentanaMeses.h"
#include "app/sesion_app.h"
#include "catalogos/catalogo.h"
#include "voucher/comprobante.h"

#include <QObject>
#include <QPointer>

class QKeySequence;
class QMenu;
class QMenuBar;

namespace quorvel::app {

/// How the voucher screen was left.
enum class FinPantalla { salir, otra_empresa, reabrir, error };

/// What was on a screen that is opened again at once.
struct LoQueHabia {
    std::filesystem::path borrador; ///< what was not saved, empty when there was nothing
    std::optional<Clave> guardado;  ///< the saved voucher that was shown
};

/// What the host application adds to the voucher screen's window: books, master tables, configuration,
/// drafts, another company.
class Anfitrion : public QObject {
    Q_OBJECT
public:
    Anfitrion(SesionApp& sesion, qt::QtEscritorio& escritorio, Eleccion_inicial eleccion, Fecha hoy);
    ~Anfitrion() override;
    /// Tells of drafts that a crash or a lost server left behind, and brings the chosen one back.
    void ofrecer_borradores();
    /// How the screen was left.
    [[nodiscard]] FinPantalla como_termino() const { return final_; }
    [[nodiscard]] const LoQueHabia& lo_que_habia() const { return habia_; }
    /// Brings it back onto a screen that was opened again.
    void reponer(const LoQueHabia& habia);
    void ver_libro(libros::Libro libro);
    /// Shows a saved voucher on the screen; what was not saved there stays as a draft.
    void ver_comprobante(const Clave& clave);
    [[nodiscard]] QWidget* ventana() const;

private:
    void agregar_menus(QMenuBar& barra);
    void agregar_edicion(QMenuBar& barra);
    void agregar_ayuda(QMenuBar& barra);
    template <class Accion>
    void opcion(QMenu* menu, const QString& texto, const QKeySequence& tecla, Accion accion);
    void decir_lo_que_falta();
    void configurar();
    void ver_historia();
    void proteger_empresa();
    void reabrir_anio_cerrado();
    void ver_meses();
    [[nodiscard]] VentanaMeses::Acciones acciones_de_meses();
    void agregar_maestros(QMenuBar& barra);
    void ver_catalogo(const Catalogo& c);
    /// An entry that a lookup lacks, made by the person. @return nothing when left
    std::optional<ui::MasterEntry> agregar_entrada(ui::Form& consulta, const ui::MissingEntry& falta);
    void dejar(FinPantalla como);

    SesionApp& sesion_;
    qt::QtEscritorio& escritorio_;
    Eleccion_inicial eleccion_;
    Fecha hoy_;
    QPointer<VentanaLibros> libros_;
    QPointer<VentanaMeses> meses_;
    FinPantalla final_ = FinPantalla::salir;
    LoQueHabia habia_;
};

/// Shows the voucher screen until it is left; a changed configuration opens it again with what was on it.
[[nodiscard]] FinPantalla trabajar(const Eleccion_inicial& eleccion);

} // namespace quorvel::app
