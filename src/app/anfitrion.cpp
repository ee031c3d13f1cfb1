#include "app/anfitrion.h"

#include "app/avisos.h"
#include "app/borradores.h"
#include "app/catalogos/VentanaCatalogo.h"
#include "app/empresa/ConfiguracionWindow.h"
#include "app/historia/VentanaHistoria.h"
#include "app/historia/VentanaProteccion.h"
#include "app/historia/memoria.h"
#include "app/respaldo/respaldos.h"
#include "app/zoom.h"
#include "qt/FormWindow.h"
#include "qt/keys.h"
#include "qt/text.h"
#include "screen/abrir.h"
#include "screen/borrador.h"
#include "screen/frmQuorvel.h"
#include "screen/recargar_documentos.h"
#include "screen/traer_version.h"
#include "voucher/cargar.h"
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
    escritorio_.make_entry = [this](ui::Form& consulta, const ui::MissingEntry& falta) {
        return agregar_entrada(consulta, falta);
    };
}

Anfitrion::~Anfitrion() {
    escritorio_.make_entry = nullptr;
    delete libros_;
    delete meses_;
}

void Anfitrion::decir_lo_que_falta() {
    frmQuorvel& f = sesion_.pantalla();
    f.atender([&] {
        f.estado.falta = falta_para_trabajar(*f.glbdb, eleccion_.empresa);
        f.grdDetalle.SetToolTip(f.estado.falta);
    });
}

QWidget* Anfitrion::ventana() const { return escritorio_.window_of(sesion_.pantalla()); }

template <class Accion>
void Anfitrion::opcion(QMenu* menu, const QString& texto, const QKeySequence& tecla, Accion accion) {
    QAction* a = menu->addAction(texto);
    if (!tecla.isEmpty()) a->setShortcut(tecla);
    connect(a, &QAction::triggered, this, [this, accion] {
        sesion_.pantalla().leave_for_command();
        accion();
    });
}

/// What the toolbar and the lines offer, with their keys; the keys themselves are the screen's.
void Anfitrion::agregar_edicion(QMenuBar& barra) {
    using F = ui::ctlRegistro::Function;
    constexpr std::pair<const char*, F> FUNCIONES[] = {{"&Nuevo\tF2", F::New},
                                                       {"&Grabar\tF5", F::Save},
                                                       {"&Buscar…\tF3", F::Search},
                                                       {"&Imprimir…\tF6", F::Print},
                                                       {"B&orrar línea\tF8", F::DeleteLine}};
    QMenu* menu = barra.addMenu(QString::fromUtf8("Ed&ición"));
    for (const auto& [texto, funcion] : FUNCIONES)
        opcion(menu, QString::fromUtf8(texto), {}, [this, funcion = funcion] {
            frmQuorvel& f = sesion_.pantalla();
            f.atender([&] { f.ctlRegistro1.press(funcion); });
        });
    menu->addSeparator();
    opcion(menu, "&Deshacer\tCtrl+Z", {}, [this] { sesion_.pantalla().grdDetalle.undo(); });
    opcion(menu, "&Rehacer\t" + qt::shortcut_text("ctrl+shift+z"), {},
           [this] { sesion_.pantalla().grdDetalle.redo(); });
    menu->addSeparator();
    for (const ui::Command& orden : sesion_.pantalla().grdDetalle.commands())
        opcion(menu, to_qt(orden.caption) + '\t' + qt::shortcut_text(orden.shortcut), {}, orden.run);
}

void Anfitrion::agregar_ayuda(QMenuBar& barra) {
    QMenu* menu = barra.addMenu("Ay&uda");
    opcion(menu, "&Ayuda del campo\tF1", {}, [this] { ventana()->findChild<QAction*>("ayuda")->trigger(); });
    auto* zoom = qApp->findChild<Zoom*>();
    if (zoom == nullptr) return;
    menu->addSeparator();
    opcion(menu, QString::fromUtf8("Letra más &grande\tCtrl++"), {},
           [zoom] { zoom->cambiar(zoom->porcentaje() + Zoom::PASO); });
    opcion(menu, QString::fromUtf8("Letra más &pequeña\tCtrl+-"), {},
           [zoom] { zoom->cambiar(zoom->porcentaje() - Zoom::PASO); });
    opcion(menu, "&Letra usual\tCtrl+0", {}, [zoom] { zoom->cambiar(Zoom::USUAL); });
}

void Anfitrion::agregar_menus(QMenuBar& barra) {
    agregar_edicion(barra);
    QMenu* libros = barra.addMenu("&Libros");
    opcion(libros, QString::fromUtf8("Libro &diario…"), QKeySequence("Ctrl+1"),
           [this] { ver_libro(libros::Libro::diario); });
    opcion(libros, QString::fromUtf8("Libro &mayor…"), QKeySequence("Ctrl+2"),
           [this] { ver_libro(libros::Libro::mayor); });
    opcion(libros, QString::fromUtf8("&Balance de 8 columnas…"), QKeySequence("Ctrl+3"),
           [this] { ver_libro(libros::Libro::balance); });
    opcion(libros, QString::fromUtf8("&Gráfico de totales por mes…"), QKeySequence("Ctrl+4"),
           [this] { ver_libro(libros::Libro::mensual); });
    libros->addSeparator();
    opcion(libros, QString::fromUtf8("Re&gistro de compras y ventas…"), QKeySequence("Ctrl+5"),
           [this] { abrir_registro(sesion_.pantalla()); });
    opcion(libros, QString::fromUtf8("Re&visión del mes…"), QKeySequence("Ctrl+6"), [this] { ver_meses(); });
    agregar_maestros(barra);
    QMenu* empresa = barra.addMenu("&Empresa");
    opcion(empresa, QString::fromUtf8("&Recuperar lo último sin grabar\tCtrl+R"), {},
           [this] { sesion_.pantalla().atender([this] { recuperar(sesion_.pantalla()); }); });
    opcion(empresa, QString::fromUtf8("Comprobantes &sin grabar…"), QKeySequence("Ctrl+Shift+R"), [this] {
        if (borradores_libres(sesion_.pantalla()).empty())
            return avisar(ventana(), "No hay comprobantes sin grabar.");
        ofrecer_borradores();
    });
    empresa->addSeparator();
    opcion(empresa, QString::fromUtf8("&Configuración contable…"), QKeySequence("Ctrl+K"),
           [this] { configurar(); });
    opcion(empresa, QString::fromUtf8("&Historia del comprobante…"), QKeySequence("Ctrl+H"),
           [this] { ver_historia(); });
    opcion(empresa, QString::fromUtf8("&Protección y meses bloqueados…"), QKeySequence("Ctrl+Shift+K"),
           [this] { proteger_empresa(); });
    opcion(empresa, QString::fromUtf8("Rea&brir el año…"), {}, [this] { reabrir_anio_cerrado(); });
    empresa->addSeparator();
    opcion(empresa, QString::fromUtf8("Res&paldar la base de datos…"), {},
           [this] { sesion_.pantalla().atender([this] { respaldar_base(eleccion_.conexion, ventana()); }); });
    opcion(empresa, QString::fromUtf8("Cambiar de &empresa…"), QKeySequence("Ctrl+Shift+E"),
           [this] { dejar(FinPantalla::otra_empresa); });
    agregar_ayuda(barra);
}

void Anfitrion::agregar_maestros(QMenuBar& barra) {
    QMenu* maestros = barra.addMenu("&Maestros");
    for (const Catalogo& c : catalogos()) {
        QAction* a = maestros->addAction(QString::fromUtf8(c.titulo) + QString::fromUtf8("…"));
        connect(a, &QAction::triggered, this, [this, &c] {
            if (sesion_.pantalla().leave_for_command()) ver_catalogo(c);
        });
    }
}

void Anfitrion::ver_catalogo(const Catalogo& c) {
    frmQuorvel& f = sesion_.pantalla();
    f.atender([&] { // the screen stays while the window is open
        VentanaCatalogo v(eleccion_.conexion, c, puede_cambiar(c, f.glbPermiso, f.glbAlias), ventana());
        v.exec();
        ventana()->activateWindow();
        if (v.cambiado()) actualizar_listas(f);
    });
}

std::optional<ui::MasterEntry> Anfitrion::agregar_entrada(ui::Form& consulta, const ui::MissingEntry& falta) {
    const frmQuorvel& f = sesion_.pantalla();
    const Catalogo& c = catalogo(falta.table);
    QWidget* duena = escritorio_.window_of(consulta);
    if (!puede_cambiar(c, f.glbPermiso, f.glbAlias)) {
        avisar(duena, QString::fromUtf8("%1: para agregar hace falta un usuario con todos los permisos.")
                          .arg(QString::fromUtf8(c.titulo)));
        return std::nullopt;
    }
    VentanaCatalogo v(eleccion_.conexion, c, true, duena);
    const auto fila = v.pedir_nueva(falta.typed, falta.group);
    duena->activateWindow();
    if (!fila) return std::nullopt;
    return ui::MasterEntry{fila->at(0), fila->at(1)};
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

void Anfitrion::ver_meses() {
    try {
        if (!meses_)
            meses_ = new VentanaMeses(eleccion_.conexion, eleccion_.empresa, sesion_.pantalla().glbN_empresa,
                                      hoy_, acciones_de_meses());
        else
            meses_->actualizar();
        meses_->show();
        meses_->activateWindow();
    } catch (const std::exception& e) {
        avisar_problema(ventana(), to_qt(e.what()));
    }
}

VentanaMeses::Acciones Anfitrion::acciones_de_meses() {
    return {[this](const libros::Posicion& p) {
                std::optional<Comprobante> c;
                frmQuorvel& f = sesion_.pantalla();
                f.atender([&] {
                    c = leer_cabecera(*f.glbdb, eleccion_.empresa, p.f_comp, p.documento, p.num_docum);
                    if (!c) f.critico("El comprobante ya no existe");
                });
                if (c) ver_comprobante(c->clave());
            },
            [this] { return borradores_libres(sesion_.pantalla()); },
            [this](const fs::path& archivo) {
                frmQuorvel& f = sesion_.pantalla();
                if (!f.leave_for_command()) return;
                ventana()->activateWindow();
                f.atender([&] { (void)recuperar_borrador(f, archivo); });
            }};
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
        VentanaHistoria historia(eleccion_.conexion, eleccion_.empresa, eleccion_.usuario, f.glbN_empresa,
                                 clave, ventana());
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
        const Desenlace d = reabrir_anio(*db, eleccion_.empresa, eleccion_.usuario, hoy_);
        hecho = d.como == Desenlace::hecho;
        hecho ? avisar(ventana(), QString::fromUtf8("El año %1 está abierto.").arg(r.anio) + rehacer)
              : avisar_problema(ventana(), to_qt(d.mensaje()));
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
    const MemoriaHistoria memoria(dbtools::carpeta_personal() / "historia.txt", eleccion.conexion,
                                  eleccion.empresa);
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
