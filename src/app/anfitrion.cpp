#include "app/anfitrion.h"

#include "app/avisos.h"
#include "app/borradores.h"
#include "app/empresa/ConfiguracionWindow.h"
#include "app/historia/VentanaHistoria.h"
#include "app/historia/VentanaProteccion.h"
#include "app/historia/memoria.h"
#include "qt/FormWindow.h"
#include "qt/text.h"
#include "screen/abrir.h"
#include "screen/borrador.h"
#include "screen/frmQuorvel.h"
#include "screen/traer_version.h"
#include "yearend/reabrir_anio.h"

#include <QApplication>
#include <QMenuBar>
#include <set>

namespace quorvel::app {

namespace fs = std::filesystem;
using qt::to_qt;

Anfitrion::Anfitrion(SesionApp& sesion, qt::QtEscritorio& escritorio, Eleccion_inicial eleccion, Fecha hoy)
    : sesion_(sesion), escritorio_(escritorio), eleccion_(std::move(eleccion)), hoy_(hoy) {
    if (ventana() == nullptr) return;
    decir_lo_que_falta();
    if (auto* barra = ventana()->findChild<QMenuBar*>()) agregar_menus(*barra);
}

Anfitrion::~Anfitrion() { delete libros_; }

void Anfitrion::decir_lo_que_falta() {
    frmQuorvel& f = sesion_.pantalla();
    f.atender([&] {
        f.estado.falta = falta_para_trabajar(*f.glbdb, eleccion_.empresa);
        f.grdDetalle.SetToolTip(f.estado.falta);
    });
}

QWidget* Anfitrion::ventana() const { return escritorio_.window_of(sesion_.pantalla()); }

void Anfitrion::agregar_menus(QMenuBar& barra) {
    const auto opcion = [&](QMenu* menu, const char* texto, const QKeySequence& tecla, auto accion) {
        QAction* a = menu->addAction(QString::fromUtf8(texto));
        if (!tecla.isEmpty()) a->setShortcut(tecla);
        connect(a, &QAction::triggered, this, [this, accion] {
            sesion_.pantalla().leave_for_command();
            accion();
        });
    };
    QMenu* libros = barra.addMenu("&Libros");
    opcion(libros, "Libro &diario…", QKeySequence("Ctrl+1"), [this] { ver_libro(libros::Libro::diario); });
    opcion(libros, "Libro &mayor…", QKeySequence("Ctrl+2"), [this] { ver_libro(libros::Libro::mayor); });
    opcion(libros, "&Balance de 8 columnas…", QKeySequence("Ctrl+3"),
           [this] { ver_libro(libros::Libro::balance); });
    opcion(libros, "&Gráfico de totales por mes…", QKeySequence("Ctrl+4"),
           [this] { ver_libro(libros::Libro::mensual); });
    libros->addSeparator();
    opcion(libros, "Re&gistro de compras y ventas…", QKeySequence("Ctrl+5"),
           [this] { abrir_registro(sesion_.pantalla()); });
    QMenu* empresa = barra.addMenu("&Empresa");
    opcion(empresa, "&Recuperar lo último sin grabar\tCtrl+R", {},
           [this] { sesion_.pantalla().atender([this] { recuperar(sesion_.pantalla()); }); });
    opcion(empresa, "Comprobantes &sin grabar…", QKeySequence("Ctrl+Shift+R"), [this] {
        if (borradores_libres(sesion_.pantalla()).empty())
            return avisar(ventana(), "No hay comprobantes sin grabar.");
        ofrecer_borradores();
    });
    empresa->addSeparator();
    opcion(empresa, "&Configuración contable…", QKeySequence("Ctrl+K"), [this] { configurar(); });
    opcion(empresa, "&Historia del comprobante…", QKeySequence("Ctrl+H"), [this] { ver_historia(); });
    opcion(empresa, "&Protección y meses bloqueados…", QKeySequence("Ctrl+Shift+K"),
           [this] { proteger_empresa(); });
    opcion(empresa, "Rea&brir el año…", {}, [this] { reabrir_anio_cerrado(); });
    empresa->addSeparator();
    opcion(empresa, "Cambiar de &empresa…", QKeySequence("Ctrl+Shift+E"),
           [this] { dejar(FinPantalla::otra_empresa); });
}

void Anfitrion::ofrecer_borradores() {
    frmQuorvel& f = sesion_.pantalla();
    f.atender([&] { // the screen stays while the list is open
        const auto elegido = elegir_borrador(borradores_libres(f), ventana());
        if (elegido) (void)recuperar_borrador(f, *elegido);
    });
}

void Anfitrion::ver_libro(libros::Libro libro) {
    try {
        if (!libros_) {
            libros_ = new VentanaLibros(eleccion_.conexion, eleccion_.empresa,
                                        sesion_.pantalla().glbN_empresa, hoy_);
            connect(libros_, &VentanaLibros::comprobante_pedido, this, &Anfitrion::ver_comprobante);
        }
        libros_->abrir(libro);
    } catch (const std::exception& e) {
        avisar_problema(ventana(), to_qt(e.what()));
    }
}

void Anfitrion::ver_comprobante(const Clave& clave) {
    frmQuorvel& f = sesion_.pantalla();
    if (!f.leave_for_command()) return;
    ventana()->raise();
    ventana()->activateWindow();
    f.atender([&] {
        if (!abrir_comprobante(f, clave)) return f.critico("El comprobante ya no existe");
        f.grdDetalle.SetFocus();
    });
}

void Anfitrion::configurar() {
    frmQuorvel& f = sesion_.pantalla();
    bool cambiada = false;
    f.atender([&] { // the screen stays while its owner's window is open
        ConfiguracionWindow configuracion(eleccion_.conexion, eleccion_.empresa, f.glbN_empresa, hoy_,
                                          ventana());
        cambiada = configuracion.exec() == QDialog::Accepted;
    });
    if (cambiada) dejar(FinPantalla::reabrir);
}

void Anfitrion::ver_historia() {
    frmQuorvel& f = sesion_.pantalla();
    f.atender([&] {
        const auto clave =
            !f.glbBanderaNuevo && f.estado.cargado ? std::optional(f.estado.cargado->clave()) : std::nullopt;
        VentanaHistoria historia(eleccion_.conexion, eleccion_.empresa, f.glbN_empresa, clave, ventana());
        if (historia.exec() == QDialog::Accepted && historia.elegido()) traer_version(f, *historia.elegido());
    });
}

void Anfitrion::proteger_empresa() {
    frmQuorvel& f = sesion_.pantalla();
    f.atender([&] {
        VentanaProteccion(eleccion_.conexion, eleccion_.empresa, eleccion_.usuario, f.glbN_empresa, hoy_,
                          ventana())
            .exec();
    });
}

void Anfitrion::reabrir_anio_cerrado() {
    frmQuorvel& f = sesion_.pantalla();
    bool hecho = false;
    f.atender([&] {
        const auto db = abrir_sesion(eleccion_.conexion);
        const Reapertura r = leer_reapertura(*db, eleccion_.empresa);
        if (r.anio == 0) return avisar(ventana(), QString::fromUtf8("No hay un año cerrado que reabrir"));
        const QString rehacer =
            QString::fromUtf8("\n\nDespués hay que hacer de nuevo:\n") + to_qt(por_rehacer(r));
        if (!preguntar(
                ventana(),
                QString::fromUtf8("¿Reabrir el año %1? Se quitan el comprobante de cierre%2 y el año %3 "
                                  "deja de estar abierto; sus otros comprobantes quedan.")
                        .arg(r.anio)
                        .arg(r.aperturas.empty() || !r.quita_aperturas() ? "" : ", las aperturas")
                        .arg(r.anio + 1) +
                    rehacer))
            return;
        const std::string error = reabrir_anio(*db, eleccion_.empresa, eleccion_.usuario, hoy_);
        hecho = error.empty();
        hecho ? avisar(ventana(), QString::fromUtf8("El año %1 está abierto.").arg(r.anio) + rehacer)
              : avisar_problema(ventana(), to_qt(error));
    });
    if (hecho) dejar(FinPantalla::reabrir);
}

void Anfitrion::dejar(FinPantalla como) {
    frmQuorvel& f = sesion_.pantalla();
    final_ = como;
    if (!f.glbBanderaNuevo && f.estado.cargado) habia_.guardado = f.estado.cargado->clave();
    std::set<fs::path> de_antes;
    for (const BorradorLibre& b : borradores_libres(f)) de_antes.insert(b.archivo);
    f.Unload(); // what is not saved stays as a draft
    for (const BorradorLibre& b : borradores_libres(f))
        if (!de_antes.contains(b.archivo)) habia_.borrador = b.archivo;
}

void Anfitrion::reponer(const LoQueHabia& habia) {
    frmQuorvel& f = sesion_.pantalla();
    f.atender([&] {
        if (!habia.borrador.empty())
            (void)recuperar_borrador(f, habia.borrador);
        else if (habia.guardado)
            (void)abrir_comprobante(f, *habia.guardado);
        else
            return;
        f.grdDetalle.SetFocus();
    });
}

namespace {

/// @param habia in: what comes back at once, nothing on the first screen; out: what the screen leaves
FinPantalla una_pantalla(const Eleccion_inicial& eleccion, std::optional<LoQueHabia>& habia) {
    qt::QtEscritorio escritorio;
    qt::QtReportPrinter impresor;
    const RelojSistema reloj;
    SesionApp sesion(eleccion, escritorio, impresor, reloj, dbtools::carpeta_personal());
    sesion.mostrar();
    frmQuorvel& f = sesion.pantalla();
    const auto cerrar = f.Closed.connect([] { QApplication::quit(); });
    if (!f.visible()) return FinPantalla::salir;
    Anfitrion anfitrion(sesion, escritorio, eleccion, reloj.hoy());
    if (habia)
        anfitrion.reponer(*habia);
    else
        anfitrion.ofrecer_borradores();
    const MemoriaHistoria memoria(carpeta_personal() / "historia.txt", eleccion.conexion, eleccion.empresa);
    f.atender([&] {
        if (const std::string mal = memoria.comparar(*abrir_sesion(eleccion.conexion)); !mal.empty())
            avisar_problema(anfitrion.ventana(), to_qt(mal));
    });
    if (f.visible()) QApplication::exec();
    if (const auto db = abrir_sesion(eleccion.conexion)) memoria.recordar(*db);
    habia = anfitrion.lo_que_habia();
    return anfitrion.como_termino();
}

} // namespace

FinPantalla trabajar(const Eleccion_inicial& eleccion) {
    try {
        std::optional<LoQueHabia> habia;
        while (true) {
            const FinPantalla fin = una_pantalla(eleccion, habia);
            if (fin != FinPantalla::reabrir) return fin;
        }
    } catch (const std::exception& e) {
        avisar_problema(nullptr, to_qt(e.what()));
        return FinPantalla::error;
    }
}

} // namespace quorvel::app
