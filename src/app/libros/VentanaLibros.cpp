#include "app/libros/VentanaLibros.h"

#include "app/libros/grafico.h"
#include "app/libros/informes.h"
#include "app/libros/modelos.h"
#include "app/sesion_app.h"
#include "empresa/configuracion_anual.h"
#include "platform/files/engine_files.h"
#include "qt/file_dialog.h"
#include "qt/icons.h"
#include "qt/screen_room.h"
#include "qt/text.h"
#include "text/cuantos.h"
#include "text/numeros.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QProgressDialog>
#include <QPushButton>
#include <QSaveFile>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>
#include <sstream>

namespace quorvel::app {

using namespace libros;

using qt::to_qt;
using qt::to_std;

namespace {

Fecha de_qt(const QDate& d) {
    return Fecha{std::chrono::year(d.year()), std::chrono::month(static_cast<unsigned>(d.month())),
                 std::chrono::day(static_cast<unsigned>(d.day()))};
}
QString entero(std::int64_t n) { return to_qt(Decimal(n).formato("#,##0")); }

/// The waiting pointer for as long as it lives.
struct Espera {
    Espera() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Espera() { QApplication::restoreOverrideCursor(); }
    Espera(const Espera&) = delete;
    Espera& operator=(const Espera&) = delete;
};

} // namespace

VentanaLibros::VentanaLibros(const std::string& conexion, int empresa, const std::string& n_empresa,
                             Fecha hoy, QWidget* parent)
    : QDialog(parent, Qt::Window), db_(abrir_sesion(conexion)), empresa_(empresa), hoy_(hoy) {
    setObjectName("libros");
    setWindowTitle("Libros — " + to_qt(n_empresa));
    setWindowIcon(qt::program_icon());
    const auto anios = anios_configurados(*db_, empresa);
    anio_ = anios.empty() ? anio(hoy) : anios.front();
    diario_ = new DiarioModelo(this);
    cuentas_ = new CuentasModelo(this);
    movimientos_ = new MovimientosModelo(this);
    balance_ = new BalanceModelo(this);
    for (TablaModelo* m : {static_cast<TablaModelo*>(diario_), static_cast<TablaModelo*>(movimientos_)})
        connect(m, &TablaModelo::fallo, this, [this](const QString& texto) { decir(texto, true); });
    paginas_ = new QTabWidget(this);
    paginas_->setDocumentMode(true);
    diario_vista_ = tabla(diario_, "Libro diario", {92, 100, 64, 200, 64, 0, 96, 96}, 5);
    balance_vista_ = tabla(balance_, "Balance de 8 columnas", {60, 0, 90, 90, 90, 90, 90, 90, 90, 90}, 1);
    paginas_->addTab(diario_vista_, "&Diario");
    paginas_->addTab(construir_mayor(), "&Mayor");
    paginas_->addTab(balance_vista_, "&Balance");
    al_elegir(diario_vista_, [this](int fila) { ver_comprobante(diario_->comprobante(fila)); });
    al_elegir(cuentas_vista_, [this](int) { movimientos_vista_->setFocus(); });
    al_elegir(movimientos_vista_, [this](int fila) { ver_comprobante(movimientos_->comprobante(fila)); });
    al_elegir(balance_vista_, [this](int fila) { ver_mayor_de(fila); });
    paginas_->addTab(grafico_ = new Grafico(this), QString::fromUtf8("&Gráfico"));
    estado_ = new QLabel(this);
    estado_->setTextFormat(Qt::PlainText);
    estado_->setWordWrap(true);
    auto* abajo = new QHBoxLayout;
    abajo->addWidget(estado_, 1);
    const auto boton = [&](const QString& texto, auto accion) {
        auto* b = new QPushButton(texto, this);
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, accion);
        abajo->addWidget(b);
        return b;
    };
    boton("&PDF…", [this] {
        pedir_archivo("PDF (*.pdf)", ".pdf");
    })->setToolTip("Guarda lo que se ve como PDF");
    boton("&CSV…", [this] {
        pedir_archivo("CSV (*.csv)", ".csv");
    })->setToolTip("Guarda lo que se ve para una planilla");
    boton("Ce&rrar", [this] { reject(); });
    auto* dentro = new QWidget(this);
    auto* todo = new QVBoxLayout(this);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->addWidget(qt::scroll_area(dentro, this));
    auto* columna = new QVBoxLayout(dentro);
    columna->setContentsMargins(12, 10, 12, 10);
    columna->setSpacing(8);
    columna->addWidget(construir_filtro());
    columna->addWidget(paginas_, 1);
    columna->addLayout(abajo);
    connect(paginas_, &QTabWidget::currentChanged, this, [this] { actualizar(); });
    for (int i = 0; i < paginas_->count(); ++i)
        connect(new QShortcut(QKeySequence(QString("Ctrl+%1").arg(i + 1)), this), &QShortcut::activated, this,
                [this, i] { abrir(static_cast<Libro>(i)); });
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, [this] {
        for (PedidoLibro& p : leido_) p = {};
        actualizar();
    });
    qt::resize_within_screen(*this, {1180, 660});
    elegir_periodo(0);
}

VentanaLibros::~VentanaLibros() = default;

QWidget* VentanaLibros::construir_filtro() {
    auto* zona = new QWidget(this);
    auto* filas = new QHBoxLayout(zona);
    filas->setObjectName("fold_filtro");
    filas->setContentsMargins(0, 0, 0, 0);
    QHBoxLayout* fila = nullptr;
    const auto otra_fila = [&] {
        fila = new QHBoxLayout;
        filas->addLayout(fila);
    };
    otra_fila();
    const auto con_rotulo = [&](const QString& texto, QWidget* w) {
        auto* rotulo = new QLabel(texto, zona);
        rotulo->setBuddy(w);
        w->setAccessibleName(QString(texto).remove('&'));
        fila->addWidget(rotulo);
        fila->addWidget(w);
    };
    periodo_ = new QComboBox(zona);
    periodo_->addItem(QString::fromUtf8("Año %1").arg(anio_));
    for (const char* mes : {"Enero", "Febrero", "Marzo", "Abril", "Mayo", "Junio", "Julio", "Agosto",
                            "Septiembre", "Octubre", "Noviembre", "Diciembre"})
        periodo_->addItem(QString("%1 %2").arg(mes).arg(anio_));
    periodo_->addItem(QString::fromUtf8("Año %1").arg(anio_ - 1));
    periodo_->addItem("Otras fechas");
    con_rotulo(QString::fromUtf8("Perí&odo"), periodo_);
    const auto fecha = [&] {
        auto* d = new QDateEdit(zona);
        d->setDisplayFormat("dd/MM/yyyy");
        d->setCalendarPopup(true);
        d->setMinimumWidth(112);
        connect(d, &QDateEdit::dateChanged, this, [this] {
            periodo_->setCurrentIndex(periodo_->count() - 1);
            actualizar();
        });
        return d;
    };
    con_rotulo("D&esde", desde_ = fecha());
    con_rotulo("&Hasta", hasta_ = fecha());
    fila->addStretch(1);
    otra_fila();
    norma_ = new QComboBox(zona);
    norma_->addItem("Todas", "");
    norma_->addItem("Tributaria", "1");
    norma_->addItem("IFRS", "2");
    con_rotulo("&Norma", norma_);
    sin_cierre_ = new QCheckBox("&Sin el cierre anual", zona);
    sin_cierre_->setChecked(true);
    sin_cierre_->setToolTip("Deja fuera el comprobante de cierre, que salda las cuentas de resultado");
    fila->addWidget(sin_cierre_);
    fila->addStretch(1);
    connect(periodo_, &QComboBox::activated, this, [this](int cual) { elegir_periodo(cual); });
    connect(norma_, &QComboBox::currentIndexChanged, this, [this] { actualizar(); });
    connect(sin_cierre_, &QCheckBox::toggled, this, [this] { actualizar(); });
    return zona;
}

QTableView* VentanaLibros::tabla(QAbstractItemModel* modelo, const char* nombre, const QList<int>& anchos,
                                 int elastica) {
    auto* vista = new QTableView(this);
    vista->setModel(modelo);
    vista->setAccessibleName(QString::fromUtf8(nombre));
    vista->setSelectionBehavior(QAbstractItemView::SelectRows);
    vista->setSelectionMode(QAbstractItemView::SingleSelection);
    vista->setEditTriggers(QAbstractItemView::NoEditTriggers);
    vista->setTabKeyNavigation(false);
    vista->setShowGrid(false);
    vista->setWordWrap(false);
    vista->verticalHeader()->hide();
    vista->verticalHeader()->setDefaultSectionSize(vista->fontMetrics().height() + 6);
    vista->horizontalHeader()->setHighlightSections(false);
    const double escala = vista->fontMetrics().averageCharWidth() / 6.0;
    for (int i = 0; i < anchos.size(); ++i)
        if (i == elastica)
            vista->horizontalHeader()->setSectionResizeMode(i, QHeaderView::Stretch);
        else
            vista->setColumnWidth(i, static_cast<int>(anchos[i] * escala));
    return vista;
}

QWidget* VentanaLibros::construir_mayor() {
    auto* partes = new QSplitter(this);
    auto* izquierda = new QWidget(partes);
    auto* lista = new QVBoxLayout(izquierda);
    lista->setContentsMargins(0, 6, 0, 0);
    filtro_ = new QLineEdit(izquierda);
    filtro_->setPlaceholderText("Buscar por código o nombre");
    filtro_->setAccessibleName("Buscar cuenta");
    filtro_->setClearButtonEnabled(true);
    por_auxiliar_ = new QCheckBox("Por &auxiliar", izquierda);
    auto* arriba = new QHBoxLayout;
    arriba->addWidget(filtro_, 1);
    arriba->addWidget(por_auxiliar_);
    cuentas_vista_ = tabla(cuentas_, "Cuentas", {54, 0, 84}, 1);
    lista->addLayout(arriba);
    lista->addWidget(cuentas_vista_, 1);
    auto* derecha = new QWidget(partes);
    auto* detalle = new QVBoxLayout(derecha);
    detalle->setContentsMargins(0, 6, 0, 0);
    titulo_cuenta_ = new QLabel(derecha);
    titulo_cuenta_->setTextFormat(Qt::PlainText);
    QFont negrita = titulo_cuenta_->font();
    negrita.setBold(true);
    titulo_cuenta_->setFont(negrita);
    titulo_cuenta_->setMinimumHeight(filtro_->sizeHint().height());
    movimientos_vista_ = tabla(movimientos_, "Movimientos", {80, 60, 58, 0, 44, 80, 80, 84}, 3);
    detalle->addWidget(titulo_cuenta_);
    detalle->addWidget(movimientos_vista_, 1);
    partes->addWidget(izquierda);
    partes->addWidget(derecha);
    partes->setSizes({380, 780});
    connect(filtro_, &QLineEdit::textChanged, this, [this](const QString& texto) {
        cuentas_->filtrar(texto);
        cuentas_vista_->selectRow(0);
    });
    connect(filtro_, &QLineEdit::returnPressed, this, [this] { cuentas_vista_->setFocus(); });
    connect(por_auxiliar_, &QCheckBox::toggled, this, [this] { actualizar(); });
    connect(cuentas_vista_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& ahora) { mostrar_cuenta(ahora.row()); });
    return partes;
}

void VentanaLibros::elegir_periodo(int cual) {
    if (cual == periodo_->count() - 1) return desde_->setFocus();
    const bool mes_entero = cual >= 1 && cual <= 12;
    const int a = cual == 13 ? anio_ - 1 : anio_;
    const QDate desde(a, mes_entero ? cual : 1, 1);
    {
        const QSignalBlocker d(desde_), h(hasta_);
        desde_->setDate(desde);
        hasta_->setDate(mes_entero ? desde.addMonths(1).addDays(-1) : QDate(a, 12, 31));
    }
    periodo_->setCurrentIndex(cual);
    actualizar();
}

PedidoLibro VentanaLibros::pedido() const {
    return {.empresa = empresa_,
            .desde = de_qt(desde_->date()),
            .hasta = de_qt(hasta_->date()),
            .norma = to_std(norma_->currentData().toString()),
            .sin_cierre = sin_cierre_->isChecked(),
            .por_auxiliar = por_auxiliar_->isChecked()};
}

void VentanaLibros::abrir(Libro libro) {
    paginas_->setCurrentIndex(static_cast<int>(libro));
    actualizar();
    show();
    raise();
    activateWindow();
    (libro == Libro::mayor ? filtro_ : paginas_->currentWidget())->setFocus();
}

void VentanaLibros::decir(const QString& texto, bool problema) {
    estado_->setText((problema ? QString::fromUtf8("⚠ ") : QString()) + texto);
}

void VentanaLibros::actualizar() {
    const auto libro = static_cast<Libro>(paginas_->currentIndex());
    if (const auto rechazo = revisar_pedido(pedido(), libro)) return decir(to_qt(rechazo->mensaje), true);
    const Espera espera;
    try {
        leer(libro);
    } catch (const std::exception& e) {
        decir(to_qt(e.what()), true);
    }
}

void VentanaLibros::leer(Libro libro) {
    const PedidoLibro p = pedido();
    PedidoLibro& antes = leido_[static_cast<std::size_t>(libro)];
    const bool nuevo = antes != p;
    antes = {}; // until it has been read
    switch (libro) {
    case Libro::diario: {
        const TotalesDiario t = totales_diario(*db_, p);
        if (nuevo) diario_->mostrar(*db_, p);
        decir(QString("%1, debe %2, haber %3")
                  .arg(to_qt(cuantos(t.comprobantes, "comprobante", "comprobantes")), entero(t.debe),
                       entero(t.haber)),
              false);
        if (t.debe != t.haber)
            decir(estado_->text() + ". No cuadra: diferencia " + entero(t.debe - t.haber), true);
        break;
    }
    case Libro::mayor: {
        auto cuentas = leer_mayor(*db_, p);
        decir(to_qt(cuantos(static_cast<std::int64_t>(cuentas.size()), "cuenta", "cuentas") +
                    " con saldo o movimiento. Saldo: + deudor, − acreedor."));
        if (nuevo) {
            cuentas_->mostrar(std::move(cuentas));
            movimientos_->vaciar();
            cuentas_vista_->selectRow(0);
        }
        break;
    }
    case Libro::balance: {
        Balance b = leer_balance(*db_, p);
        decir(to_qt(b.resultado.nombre) + ": " + entero(std::max(b.resultado.perdida, b.resultado.ganancia)) +
              QString(". Totales: inventario %1, resultado %2")
                  .arg(entero(b.totales.activo), entero(b.totales.ganancia)));
        if (b.descuadre() != 0)
            decir("Hay comprobantes que no cuadran: diferencia " + entero(b.descuadre()), true);
        else if (!b.sin_cuenta.empty())
            decir("Cuentas que no están en el plan: " + to_qt(b.sin_cuenta.front()) +
                      (b.sin_cuenta.size() > 1 ? " y otras" : ""),
                  true);
        balance_->mostrar(std::move(b));
        break;
    }
    case Libro::mensual:
        grafico_->mostrar(leer_totales_mensuales(*db_, empresa_, anio(p.desde)), anio(p.desde));
        decir(QString::fromUtf8("Año %1 completo, todas las normas").arg(anio(p.desde)));
        break;
    }
    antes = p;
}

void VentanaLibros::mostrar_cuenta(int fila) {
    const CuentaMayor* c = cuentas_->cuenta(fila);
    if (c == nullptr) {
        titulo_cuenta_->clear();
        return movimientos_->vaciar();
    }
    titulo_cuenta_->setText(to_qt(c->centro + " " + c->n_centro +
                                  (c->auxiliar.empty() ? "" : " · " + c->auxiliar + " " + c->n_auxiliar)) +
                            QString("   debe %1, haber %2").arg(entero(c->debe), entero(c->haber)));
    const Espera espera;
    movimientos_->mostrar(*db_,
                          leido_[static_cast<std::size_t>(Libro::mayor)].empresa != 0
                              ? leido_[static_cast<std::size_t>(Libro::mayor)]
                              : pedido(),
                          *c);
}

/// Enter or a double click on a line.
void VentanaLibros::al_elegir(QTableView* vista, std::function<void(int)> accion) {
    connect(vista, &QTableView::activated, this,
            [accion = std::move(accion)](const QModelIndex& i) { accion(i.row()); });
}

void VentanaLibros::ver_comprobante(const std::optional<Posicion>& donde) {
    if (!donde) return;
    if (!isSignalConnected(QMetaMethod::fromSignal(&VentanaLibros::comprobante_pedido)))
        return decir(
            QString::fromUtf8("Los comprobantes se abren desde la pantalla de comprobantes: Iniciar."));
    Q_EMIT comprobante_pedido({.empresa = empresa_,
                               .f_comp = donde->f_comp,
                               .documento = donde->documento,
                               .num_docum = donde->num_docum});
}

void VentanaLibros::ver_mayor_de(int fila) {
    const QString cuenta = balance_->cuenta(fila);
    if (cuenta.isEmpty()) return;
    abrir(Libro::mayor);
    filtro_->setText(cuenta);
    cuentas_vista_->setFocus();
}

void VentanaLibros::pedir_archivo(const char* filtro, const char* ending) {
    static constexpr const char* NOMBRES[] = {"diario", "mayor", "balance", "totales_mensuales"};
    const QString propuesto = QString("%1_%2_%3%4")
                                  .arg(NOMBRES[paginas_->currentIndex()], desde_->date().toString("yyyyMMdd"),
                                       hasta_->date().toString("yyyyMMdd"), ending);
    QString archivo = qt::choose_file(this, {"Guardar", {filtro}, propuesto, qt::Choose::save});
    if (archivo.isEmpty()) return;
    if (!archivo.endsWith(ending)) archivo += ending;
    QString motivo;
    if (exportar(archivo, motivo))
        decir("Guardado: " + archivo);
    else if (!motivo.isEmpty())
        decir(motivo, true);
}

bool VentanaLibros::exportar(const QString& archivo, QString& motivo) {
    const auto libro = static_cast<Libro>(paginas_->currentIndex());
    try {
        if (const auto rechazo = revisar_pedido(pedido(), libro)) throw std::runtime_error(rechazo->mensaje);
        if (archivo.endsWith(".pdf")) {
            const Espera espera;
            escribir_libro_pdf(*db_, libro, pedido(), dbtools::carpeta_datos() / "reports", to_std(archivo));
            return true;
        }
        refuse_engine_file(to_std(archivo));
        QSaveFile salida(archivo); // the old file stays until the new one is whole
        if (!salida.open(QIODevice::WriteOnly)) throw std::runtime_error(to_std(salida.errorString()));
        QProgressDialog avance(QString::fromUtf8("Escribiendo líneas…"), "Cancelar", 0, 0, this);
        avance.setWindowModality(Qt::WindowModal);
        avance.setMinimumDuration(800);
        std::ostringstream texto;
        texto << "\xEF\xBB\xBF"; // spreadsheets then read it as UTF-8
        const bool entero_ = escribir_libro_csv(*db_, libro, pedido(), texto, [&](long filas, long) {
            salida.write(QByteArray::fromStdString(texto.str()));
            texto.str({});
            avance.setLabelText(to_qt(cuantos(filas, "línea escrita", "líneas escritas")));
            QApplication::processEvents();
            return !avance.wasCanceled();
        });
        if (!entero_) return false;
        salida.write(QByteArray::fromStdString(texto.str()));
        if (!salida.commit()) throw std::runtime_error(to_std(salida.errorString()));
        return true;
    } catch (const std::exception& e) {
        motivo = to_qt(e.what());
        return false;
    }
}

} // namespace quorvel::app
