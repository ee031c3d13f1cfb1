// Goal: the host application's windows do what they show. Method: the windows on the offscreen platform with
// a demonstration company, keys and buttons as a person uses them. QUORVEL_FOTOS=folder takes their pictures.
#include "apoyo/comprobante.h"
#include "app/StartWindow.h"
#include "app/anfitrion.h"
#include "app/borradores.h"
#include "app/empresa/ConfiguracionWindow.h"
#include "app/empresa/NuevaEmpresa.h"
#include "app/empresa/formulario.h"
#include "app/estilo.h"
#include "app/libros/grafico.h"
#include "app/libros/modelos.h"
#include "app/recientes.h"
#include "app/teclado.h"
#include "dbtools/esquema.h"
#include "demo/demo.h"
#include "puesto.h"
#include "qt/FormWindow.h"
#include "qt/text.h"
#include "screen/abrir.h"
#include "screen/borrador.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <cstdlib>
#include <fstream>
#include <functional>

using namespace quorvel;
using namespace quorvel::app;
using namespace quorvel::libros;
using namespace quorvel::apoyo;
namespace fs = std::filesystem;

namespace {

void foto(QWidget& w, const char* nombre) {
    const QString carpeta = qEnvironmentVariable("QUORVEL_FOTOS");
    if (carpeta.isEmpty()) return;
    QCoreApplication::processEvents();
    w.grab().save(carpeta + "/" + nombre + ".png");
}
QString textos(QWidget& w) {
    QString todo;
    for (const QLabel* l : w.findChildren<QLabel*>())
        if (!l->isHidden()) todo += l->text() + "\n";
    for (const QListWidget* lista : w.findChildren<QListWidget*>())
        for (int i = 0; i < lista->count(); ++i) todo += lista->item(i)->text() + "\n";
    return todo;
}
QLineEdit* caja(QWidget& w, const char* nombre) {
    for (auto* c : w.findChildren<QLineEdit*>())
        if (c->accessibleName() == QString::fromUtf8(nombre)) return c;
    ADD_FAILURE() << nombre;
    return w.findChild<QLineEdit*>();
}
QTableView* tabla(QWidget& w, const char* nombre) {
    for (auto* t : w.findChildren<QTableView*>())
        if (t->accessibleName() == QString::fromUtf8(nombre)) return t;
    ADD_FAILURE() << nombre;
    return nullptr;
}
QString celda(const QTableView* t, int fila, int columna) {
    return t->model()->index(fila, columna).data().toString();
}
std::string contenido(const fs::path& archivo) {
    std::ifstream in(archivo, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}
std::string texto_de_pdf(const fs::path& archivo) {
    const std::string salida = archivo.string() + ".txt";
    if (std::system(("pdftotext -layout '" + archivo.string() + "' '" + salida + "'").c_str()) != 0)
        return "";
    return contenido(salida);
}
/// One demonstration company for all tests that only read it.
const std::string& demostracion() {
    static const std::string conexion = [] {
        aplicar_estilo(*qobject_cast<QApplication*>(QCoreApplication::instance()), Tema::claro);
        const std::string c = "sqlite:" + carpeta_nueva() + "/demo.db";
        demo::crear_demo(c, fecha(2026, 11, 25));
        return c;
    }();
    return conexion;
}
constexpr Fecha AHORA = fecha(2026, 11, 25);

TEST(VentanaLibrosTest, ShowsBalanceLedgerJournalAndChart) {
    VentanaLibros v(demostracion(), 1, "Comercial Los Aromos Ltda.", AHORA);
    v.abrir(Libro::balance);
    const auto db = abrir_sesion(demostracion());
    const Balance b = leer_balance(*db, v.pedido());
    const QTableView* balance = tabla(v, "Balance de 8 columnas");
    const int n = balance->model()->rowCount();
    ASSERT_EQ(n, static_cast<int>(b.cuentas.size()) + 3);
    EXPECT_EQ(celda(balance, n - 1, 6), celda(balance, n - 1, 7)) << "assets and liabilities agree";
    EXPECT_EQ(celda(balance, n - 1, 8), celda(balance, n - 1, 9));
    EXPECT_EQ(celda(balance, n - 1, 2), monto(b.totales.debitos));
    foto(v, "balance");

    v.abrir(Libro::mayor);
    auto* cuentas = tabla(v, "Cuentas");
    caja(v, "Buscar cuenta")->setText("credito fisc");
    ASSERT_GT(cuentas->model()->rowCount(), 0);
    EXPECT_EQ(celda(cuentas, 0, 0), "109001") << "accents do not matter";
    caja(v, "Buscar cuenta")->setText("109001");
    ASSERT_EQ(cuentas->model()->rowCount(), 1);
    auto* movimientos = tabla(v, "Movimientos");
    while (movimientos->model()->canFetchMore({})) movimientos->model()->fetchMore({});
    const int filas = movimientos->model()->rowCount();
    EXPECT_EQ(celda(movimientos, 0, 3), "Saldo anterior");
    EXPECT_EQ(celda(movimientos, filas - 1, 7), celda(cuentas, 0, 2)) << "ends at the account's balance";
    caja(v, "Buscar cuenta")->clear();
    foto(v, "mayor");

    v.abrir(Libro::diario);
    auto* diario = tabla(v, "Libro diario");
    const int primera = diario->model()->rowCount();
    EXPECT_GT(primera, 500);
    EXPECT_TRUE(diario->model()->canFetchMore({})) << "the rest is read when it comes into sight";
    diario->model()->fetchMore({});
    EXPECT_GT(diario->model()->rowCount(), primera);
    EXPECT_TRUE(textos(v).contains("comprobantes, debe"));
    foto(v, "diario");

    Teclado().tecla(Qt::Key_Return);
    EXPECT_TRUE(textos(v).contains("Los comprobantes se abren desde")) << "there is no voucher screen here";
    // from the balance to what makes up an account
    QTest::keyClick(&v, Qt::Key_3, Qt::ControlModifier);
    auto* lineas = tabla(v, "Balance de 8 columnas");
    EXPECT_EQ(v.focusWidget(), lineas);
    lineas->selectRow(2);
    Teclado().tecla(Qt::Key_Return);
    EXPECT_EQ(v.focusWidget(), cuentas);
    EXPECT_EQ(celda(cuentas, 0, 0), celda(lineas, 2, 0));
    Teclado().tecla(Qt::Key_Return);
    EXPECT_EQ(v.focusWidget(), movimientos);

    QTest::keyClick(&v, Qt::Key_4, Qt::ControlModifier);
    EXPECT_FALSE(v.findChild<Grafico*>()->libros().empty());
    EXPECT_TRUE(v.findChild<Grafico*>()->accessibleDescription().contains("VENTAS"));
    foto(v, "grafico");
}

TEST(VentanaLibrosTest, PdfAndCsvHoldWhatIsOnTheScreen) {
    const fs::path carpeta = carpeta_nueva();
    VentanaLibros v(demostracion(), 1, "Comercial Los Aromos Ltda.", AHORA);
    auto* periodo = v.findChild<QComboBox*>();
    periodo->setCurrentIndex(3);
    Q_EMIT periodo->activated(3); // March
    const auto db = abrir_sesion(demostracion());
    const Balance b = leer_balance(*db, v.pedido());
    EXPECT_EQ(fecha_dmy(v.pedido().hasta), "31/03/2026");
    QString motivo;
    const std::pair<Libro, const char*> libros[] = {{Libro::diario, "diario"},
                                                    {Libro::mayor, "mayor"},
                                                    {Libro::balance, "balance"},
                                                    {Libro::mensual, "mensual"}};
    for (const auto& [libro, nombre] : libros) {
        v.abrir(libro);
        for (const char* cola : {".pdf", ".csv"}) {
            const fs::path archivo = carpeta / (std::string(nombre) + cola);
            EXPECT_TRUE(v.exportar(qt::to_qt(archivo.string()), motivo)) << qt::to_std(motivo);
            if (const QString f = qEnvironmentVariable("QUORVEL_FOTOS"); !f.isEmpty())
                fs::copy_file(archivo, fs::path(qt::to_std(f)) / archivo.filename(),
                              fs::copy_options::overwrite_existing);
        }
    }
    const std::string total = qt::to_std(monto(b.sumas.debitos));
    for (const char* nombre : {"diario", "mayor", "balance"}) {
        const std::string pdf = texto_de_pdf(carpeta / (std::string(nombre) + ".pdf"));
        EXPECT_NE(pdf.find(total), std::string::npos) << nombre << ": the total of all debits, " << total;
        EXPECT_NE(pdf.find("Desde 01/03/2026 hasta 31/03/2026"), std::string::npos) << nombre;
        EXPECT_NE(pdf.find("Comercial Los Aromos Ltda."), std::string::npos) << nombre;
    }
    EXPECT_NE(texto_de_pdf(carpeta / "mensual.pdf").find("COMPRAS"), std::string::npos);
    EXPECT_EQ(contenido(carpeta / "balance.csv"), "\xEF\xBB\xBF" + balance_csv(b));
    const std::string diario = contenido(carpeta / "diario.csv");
    const auto t = totales_diario(*db, v.pedido());
    std::int64_t debe = 0, lineas = 0;
    std::istringstream leer(diario);
    for (std::string linea; std::getline(leer, linea); ++lineas)
        if (lineas > 0) debe += std::stoll(linea.substr(linea.rfind(';', linea.rfind(';') - 1) + 1));
    EXPECT_EQ(debe, t.debe);

    // what cannot be written says why and leaves the old file
    std::ofstream(carpeta / "carpeta.csv") << "viejo";
    EXPECT_FALSE(v.exportar("/no/existe/x.csv", motivo));
    EXPECT_FALSE(motivo.isEmpty());
    EXPECT_FALSE(v.exportar("/no/existe/x.pdf", motivo));
    auto fechas = v.findChildren<QDateEdit*>();
    v.abrir(Libro::balance);
    fechas[0]->setDate(QDate(2025, 6, 1));
    EXPECT_TRUE(textos(v).contains(QString::fromUtf8("dentro de un mismo año")));
    EXPECT_FALSE(v.exportar(qt::to_qt((carpeta / "carpeta.csv").string()), motivo));
    EXPECT_EQ(contenido(carpeta / "carpeta.csv"), "viejo");
}

TEST(NuevaEmpresaTest, IsCreatedFromAnEmptyDatabaseOnlyWhenEverythingIsRight) {
    const std::string conexion = "sqlite:" + carpeta_nueva() + "/vacia.db";
    dbtools::crear_esquema(conexion);
    NuevaEmpresa v(conexion, AHORA);
    v.show();
    EXPECT_FALSE(v.crear());
    EXPECT_TRUE(textos(v).contains("Falta el nombre"));
    caja(v, "Nombre")->setText("Panadería Ñandú & Hijos");
    caja(v, "RUT")->setText("76854320-1");
    caja(v, "Usuario")->setText("ANA");
    const fs::path malo = fs::path(carpeta_nueva()) / "plan.csv";
    std::ofstream(malo) << "cuenta;nombre;tipo\n1;ACTIVO;activo\n1x;CAJA;activo\n2;;pasivo\n";
    v.leer_archivo(qt::to_qt(malo.string()));
    EXPECT_TRUE(textos(v).contains(QString::fromUtf8("línea 4, nombre: falta"))) << qt::to_std(textos(v));
    EXPECT_FALSE(v.crear());
    EXPECT_TRUE(textos(v).contains(QString::fromUtf8("línea 3, cuenta")));
    foto(v, "empresa_nueva_errores");
    const auto db = abrir_sesion(conexion);
    EXPECT_EQ(filas(*db, "select count(*) from ctmcentros"), "0") << "nothing half imported";
    auto* origen = v.findChild<QComboBox*>();
    origen->setCurrentIndex(0);
    Q_EMIT origen->activated(0);
    caja(v, "RUT")->setText("76854320-8");
    caja(v, QString::fromUtf8("Dirección").toUtf8().constData())->setText("Av. Irarrázaval 2841, Ñuñoa");
    caja(v, "Giro")->setText("Panadería");
    foto(v, "empresa_nueva");
    EXPECT_TRUE(v.crear()) << qt::to_std(textos(v));
    EXPECT_EQ(filas(*db, "select empresa,n_empresa from admempresa"), "1|Panadería Ñandú & Hijos");
    // it can be worked in at once
    const fs::path carpeta = carpeta_nueva();
    anotar_reciente(carpeta / "recientes.txt", conexion);
    StartWindow inicio(carpeta);
    EXPECT_EQ(inicio.eleccion().usuario, 1);
    EXPECT_FALSE(textos(inicio).contains("incompleta")) << qt::to_std(textos(inicio));
}

TEST(ConfiguracionTest, AccountsAreFoundByNameAndChecked) {
    const std::string conexion = "sqlite:" + carpeta_nueva() + "/demo.db";
    demo::crear_demo(conexion, fecha(2024, 3, 31));
    ConfiguracionWindow v(conexion, 1, "Comercial Los Aromos Ltda.", AHORA);
    v.show();
    const auto cajas = v.findChildren<CajaCuenta*>();
    ASSERT_EQ(cajas.size(), 12);
    CajaCuenta* boletas = nullptr;
    for (auto* c : cajas)
        if (c->accessibleName() == "Boletas por cobrar") boletas = c;
    ASSERT_NE(boletas, nullptr);
    foto(v, "configuracion");
    boletas->setEditText("caja gen"); // the only account that holds it
    EXPECT_EQ(boletas->codigo(), "101001");
    boletas->setEditText("no existe");
    EXPECT_FALSE(v.grabar());
    EXPECT_TRUE(textos(v).contains("La cuenta no existe no existe"));
    EXPECT_EQ(boletas->accessibleDescription(), "La cuenta no existe no existe");
    boletas->poner("101002");
    EXPECT_FALSE(textos(v).contains("no existe")) << "what is being corrected is no longer wrong";
    EXPECT_EQ(boletas->accessibleDescription(), "");
    caja(v, "Hasta")->setText("31/02/2024");
    EXPECT_FALSE(v.grabar());
    EXPECT_TRUE(textos(v).contains("No es una fecha"));
    foto(v, "configuracion_error");
    caja(v, "Hasta")->setText("30/06/2024");
    caja(v, "Firma 1")->setText("O'Higgins");
    EXPECT_TRUE(v.grabar()) << qt::to_std(textos(v));
    EXPECT_EQ(filas(*abrir_sesion(conexion), "select boleta_cobrar,f_digi_final,elaborado from ctmconfigu "
                                             "where anio=2024"),
              "101002|2024-06-30|O'Higgins");
}

TEST(InicioTest, MissingDatabasesAreShownAsSuchAndCanBeForgotten) {
    const fs::path carpeta = carpeta_nueva();
    anotar_reciente(carpeta / "recientes.txt", "postgresql://ana@servidor.example/contabilidad");
    anotar_reciente(carpeta / "recientes.txt", "sqlite:/mnt/respaldo/contabilidad_2023.db");
    anotar_reciente(carpeta / "recientes.txt", demostracion());
    StartWindow v(carpeta);
    v.show();
    EXPECT_TRUE(textos(v).contains("contabilidad_2023 (no se encuentra)"));
    EXPECT_TRUE(textos(v).contains(QString::fromUtf8("Año contable 2026")));
    foto(v, "inicio");
    auto* lista = v.findChild<QListWidget*>();
    lista->setCurrentRow(1);
    Q_EMIT lista->itemClicked(lista->item(1));
    foto(v, "inicio_falta");
    for (auto* boton : v.findChildren<QPushButton*>())
        if (boton->text() == "&Quitar") boton->click();
    EXPECT_EQ(leer_recientes(carpeta / "recientes.txt").size(), 2U);
    EXPECT_EQ(v.eleccion().empresa, 1);
}

TEST(InicioTest, EnterAfterAConnectionLeavesTheUserToBeChosen) {
    const fs::path carpeta = carpeta_nueva();
    anotar_reciente(carpeta / "recientes.txt", demostracion());
    StartWindow v(carpeta);
    v.show();
    caja(v, "Conexión")->setFocus();
    Teclado().tecla(Qt::Key_Return);
    EXPECT_TRUE(v.isVisible());
    EXPECT_EQ(v.focusWidget()->accessibleName(), "Usuario");
    Teclado().tecla(Qt::Key_Return);
    EXPECT_EQ(v.result(), QDialog::Accepted);
}

TEST(InicioTest, TheFirstCompanyOfANewDatabaseIsReadyToStart) {
    const fs::path carpeta = carpeta_nueva();
    anotar_reciente(carpeta / "recientes.txt", demostracion());
    const std::string conexion = "sqlite:" + (carpeta / "nueva.db").string();
    dbtools::crear_esquema(conexion);
    StartWindow v(carpeta);
    v.show();
    auto* lista = v.findChild<QListWidget*>();
    EXPECT_EQ(lista->currentRow(), 0);
    caja(v, "Conexión")->setText(qt::to_qt(conexion));
    Q_EMIT caja(v, "Conexión")->returnPressed();
    EXPECT_EQ(lista->currentRow(), -1) << "another database is chosen than the list shows";
    QTimer::singleShot(100, [] {
        QWidget* nueva = QApplication::activeModalWidget();
        ASSERT_NE(nueva, nullptr);
        caja(*nueva, "Nombre")->setText("Panadería Sol");
        const QString ejemplo = caja(*nueva, "RUT")->placeholderText();
        caja(*nueva, "RUT")->setText(ejemplo);
        Teclado t;
        caja(*nueva, "Usuario")->setFocus();
        t.escribir("ANA");
        t.tecla(Qt::Key_Return); // the chart
        t.tecla(Qt::Key_Return); // the button
        EXPECT_EQ(nueva->focusWidget()->property("text"), "Crear &empresa") << "Enter is the next field";
        t.tecla(Qt::Key_Return);
        if (auto* abierta = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            ADD_FAILURE() << qt::to_std(textos(*abierta));
            abierta->reject();
        }
    });
    for (auto* boton : v.findChildren<QPushButton*>())
        if (boton->text().startsWith("&Nueva empresa")) boton->click();
    EXPECT_EQ(v.eleccion().conexion, conexion);
    EXPECT_EQ(v.eleccion().empresa, 1);
    ASSERT_NE(lista->currentItem(), nullptr);
    EXPECT_TRUE(lista->currentItem()->text().startsWith("nueva\n"));
    EXPECT_EQ(v.focusWidget()->property("text"), "&Iniciar");
}

TEST(AnfitrionTest, OffersDraftsAndAddsItsMenus) {
    Puesto puesto;
    puesto.dejar_borrador("A medio escribir");
    qt::QtEscritorio escritorio;
    SesionApp sesion = puesto.sesion(escritorio);
    sesion.mostrar();
    Anfitrion anfitrion(sesion, escritorio, puesto.eleccion, puesto.reloj.hoy());
    QTimer::singleShot(100, [] {
        QWidget* dialogo = QApplication::activeModalWidget();
        ASSERT_NE(dialogo, nullptr);
        EXPECT_TRUE(textos(*dialogo).contains("A medio escribir"));
        foto(*dialogo, "borradores");
        Teclado().tecla(Qt::Key_Return);
    });
    anfitrion.ofrecer_borradores();
    EXPECT_EQ(sesion.pantalla().txtconcepto.Text(), "A medio escribir");
    auto* ventana = escritorio.window_of(sesion.pantalla());
    QStringList menus;
    for (const QAction* a : ventana->findChild<QMenuBar*>()->actions()) menus << a->text().remove('&');
    EXPECT_TRUE(menus.contains("Libros") && menus.contains("Empresa")) << qt::to_std(menus.join(','));
    const auto de_la_pantalla = [&](QKeyCombination tecla) {
        QKeyEvent e(QEvent::ShortcutOverride, tecla.key(), tecla.keyboardModifiers());
        e.ignore();
        QApplication::sendEvent(ventana->focusWidget(), &e);
        return e.isAccepted();
    };
    for (const char* control : {"txtconcepto", "cmblibro", "grdDetalle"}) {
        sesion.pantalla().find(control)->SetFocus();
        for (const QAction* a : ventana->findChildren<QAction*>())
            if (!a->shortcut().isEmpty()) {
                EXPECT_FALSE(de_la_pantalla(a->shortcut()[0])) << control << ": " << qt::to_std(a->text());
            }
        EXPECT_TRUE(de_la_pantalla(Qt::CTRL | Qt::Key_Y)) << control;
    }
    anfitrion.ver_libro(Libro::diario);
    Teclado().tecla(Qt::Key_Down);
    const QString linea = celda(tabla(*QApplication::activeWindow(), "Libro diario"), 0, 1);
    Teclado().tecla(Qt::Key_Return);
    EXPECT_EQ(linea.section(' ', 1), qt::to_qt(sesion.pantalla().txtNum_doc.Text())) << "the line's voucher";
    EXPECT_FALSE(sesion.pantalla().glbBanderaNuevo);
    EXPECT_EQ(QApplication::activeWindow(), ventana);
    sesion.pantalla().Unload();
}

/// Does one thing after the other, each as soon as it can be done; boxes that nobody expects are noted and
/// closed.
class Guion {
public:
    using Paso = std::function<bool()>; ///< false: not yet
    explicit Guion(std::vector<Paso> pasos) : pasos_(std::move(pasos)) { seguir(); }
    ~Guion() { EXPECT_EQ(hechos_, pasos_.size()) << "steps that were never reached"; }
    std::vector<std::string> mensajes;

private:
    void seguir() {
        // before anything else: a step may open a window, and that waits in a loop of its own
        QTimer::singleShot(20, &vida_, [this] { seguir(); });
        if (++espera_ > 500) return std::abort();
        if (auto* caja = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            mensajes.push_back(qt::to_std(caja->text()));
            return caja->accept();
        }
        if (hechos_ >= pasos_.size()) return;
        const std::size_t este = hechos_++;
        if (pasos_[este]())
            espera_ = 0;
        else
            hechos_ = este;
    }
    std::vector<Paso> pasos_;
    std::size_t hechos_ = 0;
    int espera_ = 0;
    QObject vida_;
};

frmQuorvel* pantalla_abierta() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* v = dynamic_cast<qt::FormWindow*>(w); v != nullptr && v->isVisible())
            if (auto* f = dynamic_cast<frmQuorvel*>(&v->form())) return f;
    return nullptr;
}
/// Takes an entry of the host's menus.
bool orden(const char* texto) {
    for (QWidget* w : QApplication::topLevelWidgets())
        for (QAction* a : w->isVisible() ? w->findChildren<QAction*>() : QList<QAction*>())
            if (a->text().remove('&').startsWith(QString::fromUtf8(texto))) return a->trigger(), true;
    return false;
}
template <class Ventana> bool pulsar(const char* texto) {
    auto* v = qobject_cast<Ventana*>(QApplication::activeModalWidget());
    for (auto* boton : v != nullptr ? v->template findChildren<QPushButton*>() : QList<QPushButton*>())
        if (boton->text().remove('&').startsWith(QString::fromUtf8(texto))) return boton->click(), true;
    return false;
}

TEST(AnfitrionTest, AChangedConfigurationOpensTheScreenAgainWithWhatWasOnIt) {
    const fs::path carpeta = carpeta_nueva();
    ::setenv("XDG_DATA_HOME", carpeta.c_str(), 1);
    const std::string conexion = "sqlite:" + (carpeta / "demo.db").string();
    demo::crear_demo(conexion);
    std::string guardado;
    const auto con_pantalla = [](auto accion) {
        return [accion] {
            frmQuorvel* f = pantalla_abierta();
            if (f == nullptr) return false;
            accion(*f);
            return true;
        };
    };
    const auto configurar = [] { return orden("Configuración contable"); };
    const auto grabar = [] { return pulsar<ConfiguracionWindow>("Grabar"); };
    Guion guion({
        con_pantalla([](frmQuorvel& f) {
            f.txtconcepto.SetFocus();
            f.txtconcepto.user_edit("A medio escribir");
        }),
        configurar,
        grabar,
        con_pantalla([&](frmQuorvel& f) {
            EXPECT_EQ(f.txtconcepto.Text(), "A medio escribir");
            const auto rs = f.glbdb->NewRecord("select top 1 f_comp, documento, num_docum from ctcquorvel "
                                               "where subsistema='01' and estado='P'");
            ASSERT_TRUE(
                abrir_comprobante(f, {1, "01", *rs->at(0).date(), rs->at(1).text(), rs->at(2).text()}));
            guardado = f.Caption();
        }),
        configurar,
        grabar,
        con_pantalla([&](frmQuorvel& f) {
            EXPECT_EQ(f.Caption(), guardado) << "not the draft that was put aside";
            f.ctlRegistro1.press(ui::ctlRegistro::Function::New);
            f.txtconcepto.SetText("");
        }),
        configurar,
        grabar,
        con_pantalla([](frmQuorvel& f) { EXPECT_EQ(f.txtconcepto.Text(), "") << "nothing was on it"; }),
        [] { return orden("Cambiar de empresa"); },
    });
    EXPECT_EQ(trabajar({conexion, carpeta / "print.db", 1, 1}), FinPantalla::otra_empresa);
    EXPECT_EQ(guion.mensajes, std::vector<std::string>{});
    EXPECT_EQ(pantalla_abierta(), nullptr);
}

TEST(AnfitrionTest, ADraftIsDiscardedOnlyWhenAskedTwice) {
    Puesto puesto;
    for (const char* texto : {"El primero", "El segundo"}) puesto.dejar_borrador(texto);
    qt::QtEscritorio escritorio;
    SesionApp sesion = puesto.sesion(escritorio);
    sesion.mostrar();
    Anfitrion anfitrion(sesion, escritorio, puesto.eleccion, puesto.reloj.hoy());
    const auto lista = [] { return QApplication::activeModalWidget()->findChild<QListWidget*>(); };
    const auto descartar = [&] { return pulsar<QDialog>("Descartar"); };
    const auto quedan = [&] { return borradores_libres(sesion.pantalla()).size(); };
    {
        Guion guion({
            descartar, // the box is closed with its default button, which is No
            [&] {
                EXPECT_EQ(lista()->count(), 2);
                QTimer::singleShot(0, [] { pulsar<QMessageBox>("Sí"); });
                return descartar();
            },
            [&] {
                EXPECT_EQ(lista()->count(), 1);
                return pulsar<QDialog>("Más tarde");
            },
        });
        ASSERT_EQ(quedan(), 2U);
        anfitrion.ofrecer_borradores();
        EXPECT_EQ(quedan(), 1U);
        ASSERT_EQ(guion.mensajes.size(), 1U);
        EXPECT_NE(guion.mensajes[0].find("¿Borrar el borrador?"), std::string::npos);
    }
    Guion guion({[] { return pulsar<QDialog>("Recuperar"); }});
    anfitrion.ofrecer_borradores();
    EXPECT_EQ(sesion.pantalla().txtconcepto.Text(), "El primero") << "the newest had been discarded";
    sesion.pantalla().Unload();
}

TEST(AnfitrionTest, WhatIsMissingToWorkIsSaidWithWhatToDo) {
    const struct {
        const char *sql, *texto;
    } casos[] = {
        {"delete from ctmcentros", "Esta base no tiene plan de cuentas.\nNueva empresa…"},
        {"delete from adxdoc_sub", "Esta base no tiene tipos de documento.\nNueva empresa…"},
        {"delete from ctmconfigu", "La empresa no tiene configuración contable.\nSe ingresa con Ctrl+K"},
    };
    for (const auto& c : casos) {
        SCOPED_TRACE(c.sql);
        Puesto puesto;
        ejecutar(*abrir_sesion(puesto.conexion), c.sql);
        anotar_reciente(puesto.carpeta / "recientes.txt", puesto.conexion);
        StartWindow inicio(puesto.carpeta);
        EXPECT_TRUE(textos(inicio).contains(QString::fromUtf8("⚠ ") + QString::fromUtf8(c.texto)));
        qt::QtEscritorio escritorio;
        SesionApp sesion = puesto.sesion(escritorio);
        sesion.mostrar();
        const Anfitrion anfitrion(sesion, escritorio, puesto.eleccion, puesto.reloj.hoy());
        frmQuorvel& f = sesion.pantalla();
        f.ctlRegistro1.press(ui::ctlRegistro::Function::New);
        EXPECT_EQ(f.grdDetalle.ToolTip().substr(0, std::string(c.texto).size()), c.texto);
        foto(*escritorio.window_of(f), ("falta_" + std::string(c.sql).substr(12)).c_str());
        f.Unload();
    }
}

} // namespace
