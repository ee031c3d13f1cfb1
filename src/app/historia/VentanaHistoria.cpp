#include "app/historia/VentanaHistoria.h"

#include "app/avisos.h"
#include "app/sesion_app.h"
#include "historia/cadena.h"
#include "historia/comparar.h"
#include "historia/leer.h"
#include "qt/icons.h"
#include "qt/screen_room.h"
#include "qt/text.h"
#include "voucher/de_version.h"
#include "voucher/deshacer.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTableWidget>

namespace quorvel::app {

using qt::to_qt;

namespace {

QString cuando(const std::string& utc) {
    QDateTime t = QDateTime::fromString(to_qt(utc), "yyyy-MM-dd HH:mm:ss");
    t.setTimeSpec(Qt::UTC);
    return t.isValid() ? t.toLocalTime().toString("dd/MM/yyyy HH:mm:ss") : to_qt(utc);
}

QString nombrar(int empresa, const std::string& clave) {
    const auto k = clave_de_version(empresa, clave);
    if (!k) return to_qt(clave);
    return QString::fromUtf8("%1 Nº %2 del %3")
        .arg(to_qt(k->documento), to_qt(k->num_docum), to_qt(fecha_dmy(k->f_comp)));
}

QTableWidgetItem* celda(const QString& texto, bool resaltada = false) {
    auto* item = new QTableWidgetItem(texto);
    item->setToolTip(texto);
    if (!resaltada) return item;
    QFont fuente = item->font();
    fuente.setBold(true);
    item->setFont(fuente);
    return item;
}

} // namespace

VentanaHistoria::VentanaHistoria(const std::string& conexion, int empresa, int usuario,
                                 const std::string& n_empresa, const std::optional<Clave>& clave,
                                 QWidget* parent)
    : QDialog(parent), db_(abrir_sesion(conexion)), empresa_(empresa), usuario_(usuario) {
    if (clave) clave_ = clave_version(clave->f_comp, clave->documento, clave->subsistema, clave->num_docum);
    for (const Nombrado& u : leer_usuarios(*db_)) usuarios_[u.codigo] = u.nombre;
    setObjectName("historia");
    setWindowTitle(QString::fromUtf8("Historia — ") + to_qt(n_empresa));
    setWindowIcon(qt::program_icon());
    auto* partes = new QSplitter(this);
    partes->addWidget(
        versiones_ = tabla("Versiones",
                           {QString::fromUtf8("Nº"), "Fecha y hora", "Usuario", "Equipo", "Qué se hizo"}, 4));
    partes->addWidget(construir_comparacion());
    partes->setSizes({520, 560});
    auto* columna = new QVBoxLayout(this);
    columna->setContentsMargins(12, 10, 12, 10);
    columna->addWidget(construir_arriba());
    columna->addWidget(partes, 1);
    columna->addLayout(construir_abajo());
    connect(versiones_, &QTableWidget::currentCellChanged, this, [this](int fila, int, int antes, int) {
        if (fila != antes) elegir_fila();
    });
    connect(versiones_, &QTableWidget::cellActivated, this, [this] { llevar(); });
    connect(cuales_, &QComboBox::activated, this, [this] { listar(); });
    connect(contra_, &QComboBox::currentIndexChanged, this, [this] { comparar(); });
    connect(cambios_, &QCheckBox::toggled, this, [this] { comparar(); });
    qt::resize_within_screen(*this, {1100, 600});
    listar();
    versiones_->setFocus();
}

VentanaHistoria::~VentanaHistoria() = default;

QTableWidget* VentanaHistoria::tabla(const char* nombre, const QStringList& titulos, int elastica) {
    auto* t = new QTableWidget(0, static_cast<int>(titulos.size()), this);
    t->setAccessibleName(nombre);
    t->setHorizontalHeaderLabels(titulos);
    t->setSelectionBehavior(QAbstractItemView::SelectRows);
    t->setSelectionMode(QAbstractItemView::SingleSelection);
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    t->setTabKeyNavigation(false);
    t->setShowGrid(false);
    t->setAlternatingRowColors(true);
    t->setWordWrap(false);
    t->verticalHeader()->hide();
    t->verticalHeader()->setDefaultSectionSize(t->fontMetrics().height() + 6);
    t->horizontalHeader()->setHighlightSections(false);
    t->horizontalHeader()->setSectionResizeMode(elastica, QHeaderView::Stretch);
    return t;
}

QWidget* VentanaHistoria::construir_arriba() {
    auto* zona = new QWidget(this);
    auto* fila = new QHBoxLayout(zona);
    fila->setContentsMargins(0, 0, 0, 0);
    cuales_ = new QComboBox(zona);
    cuales_->setAccessibleName("Mostrar");
    if (!clave_.empty()) cuales_->addItem("Comprobante " + nombrar(empresa_, clave_));
    cuales_->addItem("Comprobantes eliminados y cortados");
    auto* rotulo = new QLabel("&Mostrar", zona);
    rotulo->setBuddy(cuales_);
    fila->addWidget(rotulo);
    fila->addWidget(cuales_);
    fila->addStretch(1);
    return zona;
}

QWidget* VentanaHistoria::construir_comparacion() {
    auto* zona = new QWidget(this);
    auto* columna = new QVBoxLayout(zona);
    columna->setContentsMargins(0, 0, 0, 0);
    auto* fila = new QHBoxLayout;
    auto* rotulo = new QLabel("Comparar &con", zona);
    contra_ = new QComboBox(zona);
    contra_->setAccessibleName("Comparar con");
    rotulo->setBuddy(contra_);
    cambios_ = new QCheckBox(QString::fromUtf8("&Sólo lo que cambió"), zona);
    cambios_->setChecked(true);
    fila->addWidget(rotulo);
    fila->addWidget(contra_, 1);
    fila->addWidget(cambios_);
    titulo_ = new QLabel(zona);
    titulo_->setTextFormat(Qt::PlainText);
    celdas_ = tabla("Comparación", {"Dato", "Antes", "En esta versión"}, 2);
    columna->addLayout(fila);
    columna->addWidget(titulo_);
    columna->addWidget(celdas_, 1);
    return zona;
}

QLayout* VentanaHistoria::construir_abajo() {
    estado_ = new QLabel(this);
    estado_->setTextFormat(Qt::PlainText);
    estado_->setWordWrap(true);
    llevar_ = new QPushButton("&Llevar a la pantalla", this);
    llevar_->setDefault(true);
    llevar_->setToolTip("Muestra esta versión como un comprobante nuevo, sin grabarla");
    deshacer_ = new QPushButton(QString::fromUtf8("&Deshacer esta importación…"), this);
    deshacer_->setAutoDefault(false);
    deshacer_->setToolTip("Elimina todos los comprobantes que se importaron o contabilizaron juntos");
    connect(deshacer_, &QPushButton::clicked, this, [this] { deshacer(); });
    auto* cerrar = new QPushButton("Ce&rrar", this);
    cerrar->setAutoDefault(false);
    connect(llevar_, &QPushButton::clicked, this, [this] { llevar(); });
    connect(cerrar, &QPushButton::clicked, this, [this] { reject(); });
    auto* fila = new QHBoxLayout;
    fila->addWidget(estado_, 1);
    fila->addWidget(deshacer_);
    fila->addWidget(llevar_);
    fila->addWidget(cerrar);
    return fila;
}

template <class F> void VentanaHistoria::intentar(F&& f) {
    try {
        f();
    } catch (const std::exception& e) {
        estado_->setText(QString::fromUtf8("⚠ ") + to_qt(e.what()));
    }
}

const Version* VentanaHistoria::actual() const {
    const int fila = versiones_->currentRow();
    return fila >= 0 && static_cast<std::size_t>(fila) < filas_.size()
               ? &filas_[static_cast<std::size_t>(fila)]
               : nullptr;
}

QString VentanaHistoria::quien(int usuario) const {
    const auto u = usuarios_.find(usuario);
    return QString::number(usuario) + (u == usuarios_.end() ? QString() : " " + to_qt(u->second));
}

void VentanaHistoria::listar() {
    const bool de_uno = !clave_.empty() && cuales_->currentIndex() == 0;
    intentar([&] {
        filas_ = de_uno ? leer_versiones(*db_, empresa_, clave_) : leer_eliminados(*db_, empresa_);
        const std::string codigo = codigo_historia(*db_, empresa_);
        estado_->setText(codigo.empty()
                             ? QString::fromUtf8("La empresa no guarda historia: se enciende en el menú "
                                                 "Empresa, Protección y meses bloqueados")
                             : QString::fromUtf8("Código de la historia a esta hora: ") + to_qt(codigo));
    });
    versiones_->horizontalHeaderItem(4)->setText(de_uno ? QString::fromUtf8("Qué se hizo") : "Comprobante");
    versiones_->setRowCount(static_cast<int>(filas_.size()));
    for (int i = 0; i < versiones_->rowCount(); ++i) {
        const Version& v = filas_[static_cast<std::size_t>(i)];
        const QString que =
            de_uno ? to_qt(v.operacion) : to_qt(v.operacion) + " · " + nombrar(empresa_, v.clave);
        const QString textos[] = {QString::number(v.numero), cuando(v.momento), quien(v.usuario),
                                  to_qt(v.maquina), que};
        for (int c = 0; c < 5; ++c) versiones_->setItem(i, c, celda(textos[c]));
    }
    for (int c = 0; c < 4; ++c) versiones_->resizeColumnToContents(c);
    versiones_->setCurrentCell(filas_.empty() ? -1 : 0, 0);
    elegir_fila();
}

void VentanaHistoria::elegir_fila() {
    const QSignalBlocker callado(contra_);
    contra_->clear();
    anteriores_.clear();
    if (const Version* v = actual())
        intentar([&] {
            for (Version& otra : leer_versiones(*db_, empresa_, v->clave))
                if (otra.numero != v->numero) anteriores_.push_back(std::move(otra));
        });
    int propuesta = static_cast<int>(anteriores_.size()); // the one before it, nothing for the first
    for (std::size_t i = 0; i < anteriores_.size(); ++i) {
        const Version& otra = anteriores_[i];
        contra_->addItem(QString::fromUtf8("Versión %1, %2, %3")
                             .arg(otra.numero)
                             .arg(cuando(otra.momento), to_qt(otra.operacion)));
        if (propuesta == static_cast<int>(anteriores_.size()) && otra.numero < actual()->numero)
            propuesta = static_cast<int>(i);
    }
    contra_->addItem("Nada: todo lo que tiene");
    contra_->setCurrentIndex(propuesta);
    comparar();
}

void VentanaHistoria::comparar() {
    celdas_->setRowCount(0);
    titulo_->clear();
    llevar_->setEnabled(actual() != nullptr);
    deshacer_->setVisible(actual() != nullptr && (actual()->operacion == operacion::IMPORTADO ||
                                                  actual()->operacion == operacion::REGISTRO));
    if (actual() == nullptr) return;
    intentar([&] {
        const auto ahora = leer_version(*db_, empresa_, actual()->numero);
        const auto otra = static_cast<std::size_t>(contra_->currentIndex());
        const auto antes = otra < anteriores_.size() ? leer_version(*db_, empresa_, anteriores_[otra].numero)
                                                     : std::optional<Version>(Version{});
        if (!ahora || !antes) return;
        const auto todas = comparar_versiones(*antes, *ahora);
        const auto distintas = std::ranges::count_if(todas, &CeldaComparada::distinta);
        titulo_->setText(distintas == 0 ? QString::fromUtf8("Ninguna diferencia")
                                        : QString::fromUtf8("Datos distintos: %1").arg(distintas));
        celdas_->setRowCount(static_cast<int>(cambios_->isChecked() ? distintas : std::ssize(todas)));
        int fila = 0;
        for (const CeldaComparada& c : todas) {
            if (cambios_->isChecked() && !c.distinta()) continue;
            celdas_->setItem(fila, 0, celda(to_qt(c.donde)));
            celdas_->setItem(fila, 1, celda(to_qt(c.antes)));
            celdas_->setItem(fila++, 2, celda(to_qt(c.ahora), c.distinta()));
        }
        celdas_->resizeColumnToContents(0);
        celdas_->setColumnWidth(1, 190);
    });
}

void VentanaHistoria::deshacer() {
    if (actual() == nullptr) return;
    const std::string grupo = actual()->grupo;
    intentar([&] {
        const Grupo g = leer_grupo(*db_, empresa_, grupo);
        if (!g.cambiados.empty()) {
            QString cuales;
            for (const std::string& c : g.cambiados) cuales += "\n" + to_qt(c);
            return avisar_problema(this, QString::fromUtf8("No se puede deshacer:") + cuales);
        }
        if (!preguntar(this, QString::fromUtf8("¿Eliminar los %1 comprobantes que se grabaron juntos?")
                                 .arg(g.comprobantes.size())))
            return;
        const Desenlace d = deshacer_grupo(*db_, empresa_, usuario_, grupo);
        if (d.como == Desenlace::hecho) return listar();
        avisar_problema(this, to_qt(d.mensaje()));
    });
}

void VentanaHistoria::llevar() {
    if (actual() == nullptr) return;
    intentar([&] {
        const auto v = leer_version(*db_, empresa_, actual()->numero);
        if (v) elegido_ = comprobante_de_version(empresa_, *v);
        if (elegido_) return accept();
        estado_->setText(QString::fromUtf8("⚠ Esta versión no contiene un comprobante"));
    });
}

} // namespace quorvel::app
