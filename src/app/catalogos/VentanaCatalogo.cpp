#include "app/catalogos/VentanaCatalogo.h"

#include "app/avisos.h"
#include "app/catalogos/CatalogoModelo.h"
#include "app/empresa/formulario.h"
#include "catalogos/cambiar.h"
#include "qt/UiLoader.h"
#include "qt/icons.h"
#include "qt/screen_room.h"
#include "qt/text.h"
#include "text/cuantos.h"
#include "text/letras_utf8.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <stdexcept>
#include <utility>

namespace quorvel::app {

using qt::to_qt;
using qt::to_std;

namespace {

constexpr int UNA_PANTALLA = 100; // rows after which a search rests until the list is scrolled

std::string sin_articulo(const Catalogo& c) { return std::string(c.singular).substr(3); }

QString valor_de(const QWidget* caja) {
    if (const auto* marca = qobject_cast<const QCheckBox*>(caja)) return marca->isChecked() ? "1" : "0";
    if (const auto* lista = qobject_cast<const QComboBox*>(caja)) return lista->currentData().toString();
    return qobject_cast<const QLineEdit*>(caja)->text();
}

void poner_valor(QWidget* caja, const QString& valor) {
    if (auto* marca = qobject_cast<QCheckBox*>(caja)) return marca->setChecked(valor == "1");
    if (auto* lista = qobject_cast<QComboBox*>(caja)) return lista->setCurrentIndex(lista->findData(valor));
    qobject_cast<QLineEdit*>(caja)->setText(valor);
}

} // namespace

VentanaCatalogo::VentanaCatalogo(const std::string& conexion, const Catalogo& c, bool puede, QWidget* parent)
    : QDialog(parent), db_(abrir_sesion(conexion)), c_(c), puede_(puede) {
    setObjectName("catalogo_ventana");
    setWindowTitle(to_qt(c.titulo));
    setWindowIcon(qt::program_icon());
    modelo_ = new CatalogoModelo(*db_, c, this);
    construir();
    construir_ficha();
    atajos();
    buscar();
    buscar_->setFocus();
    if (!puede_) decir("Sólo se mira: para cambiar hace falta un usuario con todos los permisos.");
}

VentanaCatalogo::~VentanaCatalogo() = default;

template <class F> void VentanaCatalogo::atender(F&& accion) {
    try {
        accion();
    } catch (const std::exception& e) {
        decir(std::string("✖ ") + e.what());
    }
}

void VentanaCatalogo::construir() {
    std::vector<std::string> problemas;
    QWidget* contenido = qt::UiLoader().load_form("catalogo", this, problemas);
    if (contenido == nullptr) throw std::runtime_error(problemas.front());
    auto* columna = new QVBoxLayout(this);
    columna->setContentsMargins(0, 0, 0, 0);
    const QSize pedido = contenido->size(); // the area gives it another
    columna->addWidget(qt::scroll_area(contenido, this));
    buscar_ = findChild<QLineEdit*>("buscar");
    elegido_ = findChild<QComboBox*>("elegido");
    lista_ = findChild<QTableView*>("lista");
    nueva_ = findChild<QPushButton*>("nueva");
    grabar_ = findChild<QPushButton*>("grabar");
    borrar_ = findChild<QPushButton*>("borrar");
    estado_ = findChild<QLabel*>("estado");
    lista_->setModel(modelo_);
    lista_->setAccessibleName(to_qt(c_.titulo));
    lista_->verticalHeader()->setDefaultSectionSize(lista_->fontMetrics().height() + 6);
    const double letra = lista_->fontMetrics().averageCharWidth();
    for (int i = 0; i < static_cast<int>(c_.columnas.size()); ++i) {
        const ColumnaCatalogo& x = c_.columnas[static_cast<std::size_t>(i)];
        const double titulo = static_cast<double>(QString::fromUtf8(x.titulo).size());
        const double valor = x.clase == Clase::rut ? 13 : i == 0 ? 8 : 4;
        lista_->setColumnWidth(i, static_cast<int>((std::max(titulo, valor) + 4) * letra));
    }
    lista_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    elegido_->setVisible(c_.elige >= 0);
    buscar_->setMinimumHeight(elegido_->sizeHint().height());
    if (c_.elige >= 0) {
        const ColumnaCatalogo& x = c_.columnas[static_cast<std::size_t>(c_.elige)];
        elegido_->setAccessibleName(QString::fromUtf8(x.titulo));
        elegido_->addItem(QString::fromUtf8("%1: todos").arg(QString::fromUtf8(x.titulo)), "");
        for (const Opcion& o : opciones(*db_, x))
            elegido_->addItem(to_qt(o.codigo + " " + o.nombre), to_qt(o.codigo));
    }
    connect(elegido_, &QComboBox::currentIndexChanged, this, [this] { buscar(); });
    connect(buscar_, &QLineEdit::textChanged, this, [this] { buscar(); });
    connect(buscar_, &QLineEdit::returnPressed, this, [this] { lista_->setFocus(); });
    connect(modelo_, &TablaModelo::fallo, this,
            [this](const QString& texto) { decir("✖ " + to_std(texto)); });
    connect(lista_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { mostrar_actual(); });
    connect(lista_, &QTableView::activated, this, [this] { cajas_[1]->setFocus(); });
    qt::resize_within_screen(*this, pedido);
    findChild<QSplitter*>("partes")->setSizes({560, 380});
}

QWidget* VentanaCatalogo::caja_de(const ColumnaCatalogo& x) {
    if (x.clase == Clase::marca) {
        auto* marca = new QCheckBox(QString::fromUtf8(x.ayuda), forma_);
        connect(marca, &QCheckBox::toggled, this, [this] { tocado(); });
        return marca;
    }
    if (x.clase == Clase::eleccion) {
        auto* lista = new QComboBox(forma_);
        lista->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        lista->setMinimumContentsLength(14);
        for (const Opcion& o : opciones(*db_, x))
            lista->addItem(to_qt(o.codigo + " " + o.nombre), to_qt(o.codigo));
        connect(lista, &QComboBox::currentIndexChanged, this, [this] { tocado(); });
        return lista;
    }
    auto* caja = new QLineEdit(forma_);
    caja->setPlaceholderText(QString::fromUtf8(x.ayuda));
    connect(caja, &QLineEdit::textChanged, this, [this] { tocado(); });
    return caja;
}

void VentanaCatalogo::construir_ficha() {
    auto* zona = new QWidget(this);
    auto* columna = new QVBoxLayout(zona);
    columna->setContentsMargins(0, 4, 6, 0);
    forma_ = new Formulario(zona);
    columna->addWidget(forma_);
    columna->addStretch(1);
    for (const ColumnaCatalogo& x : c_.columnas) {
        cajas_.push_back(caja_de(x));
        forma_->campo(x.nombre, QString::fromUtf8(x.titulo), cajas_.back());
    }
    QWidget* antes = lista_;
    for (QWidget* caja : cajas_) setTabOrder(std::exchange(antes, caja), caja);
    for (QWidget* boton : {nueva_, grabar_, borrar_, findChild<QPushButton*>("cerrar")})
        setTabOrder(std::exchange(antes, boton), boton);
    auto* area = findChild<QScrollArea*>("ficha");
    area->setWidget(zona);
    area->viewport()->setBackgroundRole(QPalette::Window);
    zona->setBackgroundRole(QPalette::Window);
}

void VentanaCatalogo::atajos() {
    const auto orden = [this](QPushButton* boton, void (VentanaCatalogo::*accion)(),
                              std::initializer_list<QKeySequence> teclas) {
        connect(boton, &QPushButton::clicked, this, accion);
        for (const QKeySequence& tecla : teclas)
            connect(new QShortcut(tecla, this), &QShortcut::activated, boton, [boton] { boton->click(); });
    };
    orden(nueva_, &VentanaCatalogo::nueva, {Qt::Key_F2, QKeySequence("Ctrl+N")});
    orden(grabar_, &VentanaCatalogo::grabar, {Qt::Key_F5});
    orden(borrar_, &VentanaCatalogo::borrar, {Qt::Key_F8});
    connect(findChild<QPushButton*>("cerrar"), &QPushButton::clicked, this, &VentanaCatalogo::reject);
}

void VentanaCatalogo::decir(const std::string& texto) { estado_->setText(to_qt(texto)); }

std::string VentanaCatalogo::elegido() const { return to_std(elegido_->currentData().toString()); }

void VentanaCatalogo::buscar() {
    modelo_->buscar(to_std(buscar_->text()), elegido());
    lista_->selectRow(0);
    mostrar_actual();
    seguir();
}

/// Goes on finding, between what the person does, until the window is full.
void VentanaCatalogo::seguir() {
    const int filas = modelo_->rowCount({});
    const bool busca = modelo_->hay_mas() && filas < UNA_PANTALLA;
    if (puede_ && !tocada_)
        decir(busca ? "Buscando…" : cuantos(filas, "fila", "filas") + (modelo_->hay_mas() ? " y más" : ""));
    if (!busca) return;
    QTimer::singleShot(0, modelo_, [this, pedido = buscar_->text()] {
        if (pedido != buscar_->text()) return; // another search goes on by itself
        const bool nada = modelo_->rowCount({}) == 0;
        modelo_->fetchMore({});
        if (nada && modelo_->rowCount({}) > 0) lista_->selectRow(0);
        seguir();
    });
}

void VentanaCatalogo::mostrar_actual() {
    const FilaCatalogo* fila = modelo_->fila(lista_->currentIndex().row());
    if (fila == nullptr) return mostrar(FilaCatalogo(c_.columnas.size()), false);
    mostrar(*fila, false);
}

void VentanaCatalogo::mostrar(const FilaCatalogo& fila, bool es_nueva) {
    mostrando_ = true;
    antes_ = es_nueva ? FilaCatalogo{} : fila;
    const bool alguna = es_nueva || !fila[0].empty();
    for (std::size_t i = 0; i < fila.size(); ++i) {
        poner_valor(cajas_[i], to_qt(fila[i]));
        cajas_[i]->setEnabled(puede_ && alguna && (i > 0 || es_nueva));
    }
    (void)forma_->observar({});
    mostrando_ = false;
    dejar_quieto(!es_nueva);
}

/// While a row is being changed the list waits.
void VentanaCatalogo::dejar_quieto(bool quieto) {
    tocada_ = !quieto;
    for (QWidget* w :
         {static_cast<QWidget*>(buscar_), static_cast<QWidget*>(elegido_), static_cast<QWidget*>(lista_)})
        w->setEnabled(quieto);
    nueva_->setEnabled(quieto && puede_);
    borrar_->setEnabled(quieto && puede_ && !antes_.empty() && !antes_[0].empty());
    grabar_->setEnabled(!quieto);
    grabar_->setDefault(!quieto);
}

void VentanaCatalogo::tocado() {
    if (mostrando_ || tocada_) return;
    dejar_quieto(false);
    decir("F5 graba los cambios y Esc los deja.");
}

void VentanaCatalogo::nueva() {
    atender([&] {
        FilaCatalogo fila = fila_nueva(*db_, c_);
        if (c_.elige >= 0) fila[static_cast<std::size_t>(c_.elige)] = elegido();
        mostrar(fila, true);
        decir("F5 graba " + std::string(c_.singular) + " y Esc lo deja.");
        cajas_[fila[0].empty() ? 0 : 1]->setFocus();
    });
}

FilaCatalogo VentanaCatalogo::leer() const {
    FilaCatalogo fila;
    for (const QWidget* caja : cajas_) fila.push_back(to_std(valor_de(caja)));
    return normalizar_fila(c_, std::move(fila));
}

void VentanaCatalogo::grabar() {
    atender([&] {
        const FilaCatalogo fila = leer();
        if (forma_->observar(revisar_fila(*db_, c_, fila, antes_))) return decir("✖ Hay datos que corregir.");
        if (const std::string no = grabar_fila(*db_, c_, fila, antes_); !no.empty())
            return decir("✖ " + no + ". Esc lo muestra como está.");
        cambiado_ = true;
        guardada_ = fila;
        if (una_sola_) return accept();
        const int donde = modelo_->poner(fila);
        dejar_quieto(true);
        lista_->selectRow(donde);
        mostrar_actual();
        lista_->setFocus();
        decir("✔ Grabado: " + fila[0] + " " + fila[1]);
    });
}

void VentanaCatalogo::borrar() {
    atender([&] {
        const FilaCatalogo fila = antes_;
        if (!preguntar(this,
                       to_qt("¿Eliminar " + std::string(c_.singular) + " " + fila[0] + " " + fila[1] + "?")))
            return;
        if (const std::string no = borrar_fila(*db_, c_, fila); !no.empty()) return decir("✖ " + no + ".");
        cambiado_ = true;
        modelo_->quitar(lista_->currentIndex().row());
        mostrar_actual();
        decir("✔ Eliminado: " + fila[0] + " " + fila[1]);
    });
}

void VentanaCatalogo::reject() {
    if (!tocada_ || una_sola_) return QDialog::reject();
    atender([&] { // what another user did to it meanwhile is seen
        const int fila = lista_->currentIndex().row();
        const bool era_nueva = antes_.empty();
        const auto ahora = era_nueva ? std::nullopt : leer_fila(*db_, c_, antes_[0]);
        dejar_quieto(true);
        if (ahora)
            (void)modelo_->poner(*ahora);
        else if (!era_nueva)
            modelo_->quitar(fila);
        mostrar_actual();
        lista_->setFocus();
        decir("Sin cambios.");
    });
}

std::optional<FilaCatalogo> VentanaCatalogo::pedir_nueva(const std::string& escrito,
                                                         const std::string& elegido) {
    una_sola_ = true;
    setWindowTitle(to_qt("Agregar " + sin_articulo(c_)));
    findChild<QWidget*>("izquierda")->hide();
    for (QPushButton* b : {nueva_, borrar_}) b->hide();
    qt::resize_within_screen(*this, {440, 330});
    nueva();
    const bool codigo = !escrito.empty() && escrito.find_first_not_of("0123456789") == std::string::npos;
    if (!escrito.empty()) poner_valor(cajas_[codigo ? 0 : 1], to_qt(codigo ? escrito : mayusculas(escrito)));
    if (c_.elige >= 0) poner_valor(cajas_[static_cast<std::size_t>(c_.elige)], to_qt(elegido));
    cajas_[valor_de(cajas_[0]).isEmpty() ? 0 : 1]->setFocus();
    return exec() == QDialog::Accepted ? std::optional(guardada_) : std::nullopt;
}

} // namespace quorvel::app
