#include "app/StartWindow.h"

#include "app/areas.h"
#include "app/empresa/ConfiguracionWindow.h"
#include "app/empresa/NuevaEmpresa.h"
#include "app/empresas/VentanaEmpresas.h"
#include "app/libros/VentanaLibros.h"
#include "app/recientes.h"
#include "app/respaldo/respaldos.h"
#include "dbtools/base.h"
#include "dbtools/esquema.h"
#include "demo/demo.h"
#include "historia/comenzar.h"
#include "qt/file_dialog.h"
#include "qt/icons.h"
#include "qt/screen_room.h"
#include "qt/text.h"
#include "text/cuantos.h"

#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace quorvel::app {

using qt::to_qt;
using qt::to_std;

namespace {

constexpr const char* FILTRO = "Base de datos (*.db)";

std::filesystem::path archivo_recientes(const std::filesystem::path& carpeta) {
    return carpeta / "recientes.txt";
}

/// File of an embedded database; empty for a server.
std::filesystem::path archivo_de(const std::string& conexion) {
    return conexion.starts_with("sqlite:") ? conexion.substr(7) : std::string();
}

/// A name to recognise it by, and below where it is.
QString texto_reciente(const std::string& conexion) {
    const auto archivo = archivo_de(conexion);
    if (archivo.empty()) {
        const std::string sin_opciones = conexion.substr(0, conexion.find('?'));
        return to_qt(sin_opciones.substr(sin_opciones.rfind('/') + 1)) + "\nservidor: " + to_qt(conexion);
    }
    const bool falta = !std::filesystem::exists(archivo);
    return (falta ? QString::fromUtf8("✖ ") : QString()) + to_qt(archivo.stem().string()) +
           (falta ? " (no se encuentra)" : "") + "\n" + to_qt(archivo.string());
}

} // namespace

StartWindow::StartWindow(std::filesystem::path folder) : folder_(std::move(folder)) {
    setWindowTitle("Quorvel");
    setObjectName("inicio");
    setWindowIcon(qt::program_icon());
    auto* inside = new QWidget(this);
    auto* center = new QHBoxLayout(inside);
    center->setContentsMargins(0, 0, 0, 0);
    center->setSpacing(14);
    center->addWidget(build_databases(), 3);
    center->addWidget(build_company(), 2);
    problem_ = new QLabel(this);
    problem_->setWordWrap(true);
    problem_->setTextFormat(Qt::PlainText);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(problem_, 1);
    bottom->addWidget(start_ = new QPushButton("&Iniciar", this));
    auto* leave = new QPushButton("&Salir", this);
    leave->setAutoDefault(false);
    bottom->addWidget(leave);
    start_->setDefault(true);
    connect(start_, &QPushButton::clicked, this, [this] { accept(); });
    connect(leave, &QPushButton::clicked, this, [this] { reject(); });
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(12);
    auto* title = new QHBoxLayout;
    auto* icon = new QLabel(this);
    icon->setPixmap(qt::program_icon().pixmap(36, 36));
    auto* name = new QLabel("Quorvel", this);
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.7);
    large.setBold(true);
    name->setFont(large);
    auto* what = new QLabel("Comprobantes contables", this);
    what->setForegroundRole(QPalette::PlaceholderText);
    // on the line that the larger letters stand on
    what->setContentsMargins(4, 0, 0, QFontMetrics(large).descent() - what->fontMetrics().descent());
    auto* words = new QHBoxLayout;
    words->addWidget(name);
    words->addWidget(what, 1, Qt::AlignBottom);
    title->addWidget(icon);
    title->addLayout(words, 1);
    title->setAlignment(words, Qt::AlignVCenter);
    column->addLayout(title);
    column->addWidget(qt::scroll_area(inside, this), 1);
    column->addLayout(bottom);
    qt::resize_within_screen(*this, {880, 490});
    fill_recent();
    choose(recent_->count() > 0 ? to_std(recent_->item(0)->data(Qt::UserRole).toString()) : std::string());
    start_->setFocus();
}

void StartWindow::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || !address_->hasFocus()) return QDialog::keyPressEvent(event);
    if (start_->isEnabled()) users_->setFocus();
}

QPushButton* StartWindow::button(const char* text, const char* tip, void (StartWindow::*action)()) {
    auto* made = new QPushButton(QString::fromUtf8(text), this);
    made->setAutoDefault(false);
    made->setToolTip(QString::fromUtf8(tip));
    connect(made, &QPushButton::clicked, this, action);
    return made;
}

QWidget* StartWindow::build_databases() {
    auto* group = new QGroupBox("Bases de datos", this);
    auto* column = new QVBoxLayout(group);
    recent_ = new QListWidget(group);
    recent_->setAccessibleName("Bases de datos recientes");
    recent_->setAlternatingRowColors(true);
    acortar_renglones(*recent_);
    recent_->setSpacing(3);
    const auto chosen = [this](QListWidgetItem* item) {
        choose(to_std(item->data(Qt::UserRole).toString()));
    };
    connect(recent_, &QListWidget::itemClicked, this, chosen);
    connect(recent_, &QListWidget::itemActivated, this, [this, chosen](QListWidgetItem* item) {
        chosen(item);
        if (start_->isEnabled()) accept();
    });
    address_ = new QLineEdit(group);
    address_->setPlaceholderText("sqlite:/ruta/contabilidad.db  o  postgresql://usuario@servidor/base");
    address_->setAccessibleName(QString::fromUtf8("Conexión"));
    connect(address_, &QLineEdit::returnPressed, this, [this] { choose(to_std(address_->text())); });
    auto* label = new QLabel(QString::fromUtf8("C&onexión"), group);
    label->setBuddy(address_);
    auto* line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(address_, 1);
    auto* actions = new QHBoxLayout;
    actions->addWidget(button("&Abrir archivo…", "Abre una base que ya existe", &StartWindow::open_file));
    actions->addWidget(
        button("&Crear base…", "Crea una base vacía y su primera empresa", &StartWindow::create_database));
    actions->addWidget(
        button("&Demostración…", "Crea una base con una empresa de muestra", &StartWindow::create_demo));
    forget_ =
        button("&Quitar", "Quita la base de la lista; el archivo queda donde está", &StartWindow::forget);
    actions->addWidget(forget_);
    if (!conexion_del_directorio(folder_).empty())
        actions->addWidget(button("&Buscar empresa…", "Busca una empresa en todas las bases del directorio",
                                  &StartWindow::search_companies));
    auto* copies = new QHBoxLayout;
    back_up_ =
        button("&Respaldar…", "Copia la base elegida y sus adjuntos en una carpeta", &StartWindow::back_up);
    copies->addWidget(back_up_);
    copies->addWidget(button("Res&taurar…", "Pone un respaldo en una base nueva, o en lugar de otra",
                             &StartWindow::restore));
    copies->addStretch(1);
    column->addWidget(recent_, 1);
    column->addLayout(line);
    column->addLayout(actions);
    column->addLayout(copies);
    return group;
}

QWidget* StartWindow::build_company() {
    auto* group = new QGroupBox("Empresa y usuario", this);
    auto* column = new QVBoxLayout(group);
    companies_ = new QComboBox(group);
    users_ = new QComboBox(group);
    auto* fields = new QFormLayout;
    fields->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    fields->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    fields->addRow("&Empresa", companies_);
    fields->addRow("&Usuario", users_);
    for (QComboBox* list : {companies_, users_}) {
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(20);
    }
    companies_->setAccessibleName("Empresa");
    users_->setAccessibleName("Usuario");
    connect(companies_, &QComboBox::currentIndexChanged, this, [this] { show_company(); });
    summary_ = new QLabel(group);
    summary_->setTextFormat(Qt::PlainText);
    summary_->setWordWrap(true);
    new_company_ = button("&Nueva empresa…", "Crea otra empresa en esta base", &StartWindow::create_company);
    configure_ = button("Con&figuración…", "Período y cuentas del año", &StartWindow::configure);
    books_ = button("&Libros…", "Diario, mayor, balance y gráfico", &StartWindow::show_books);
    column->addLayout(fields);
    column->addSpacing(6);
    column->addWidget(summary_);
    column->addStretch(1);
    for (QPushButton* b : {new_company_, configure_, books_}) column->addWidget(b);
    return group;
}

void StartWindow::fill_recent() {
    recent_->clear();
    for (const auto& connection : leer_recientes(archivo_recientes(folder_))) {
        auto* item = new QListWidgetItem(texto_reciente(connection), recent_);
        item->setData(Qt::UserRole, to_qt(connection));
        item->setToolTip(item->text());
    }
}

void StartWindow::show_problem(const std::string& text) {
    problem_->setText(text.empty() ? QString() : QString::fromUtf8("⚠ ") + to_qt(text));
}

void StartWindow::choose(std::string connection) {
    companies_->clear();
    users_->clear();
    connection_.clear();
    address_->setText(to_qt(connection));
    bool ready = false;
    try {
        if (connection.empty()) throw std::runtime_error("Abra una base de datos o cree una.");
        const std::string normal = dbtools::normalizar_conexion(connection);
        const auto db = abrir_sesion(normal);
        for (const auto& row : leer_usuarios(*db))
            users_->addItem(to_qt(std::to_string(row.codigo) + "  " + row.nombre), row.codigo);
        connection_ = normal;
        for (const auto& row : leer_empresas(*db))
            companies_->addItem(to_qt(std::to_string(row.codigo) + "  " + row.nombre), row.codigo);
        ready = companies_->count() > 0 && users_->count() > 0;
        show_problem(ready ? "" : "La base de datos no tiene empresas o usuarios: cree una empresa.");
    } catch (const std::exception& e) {
        connection_.clear();
        show_problem(e.what());
    }
    start_->setEnabled(ready);
    configure_->setEnabled(ready);
    books_->setEnabled(ready);
    new_company_->setEnabled(!connection_.empty());
    back_up_->setEnabled(!connection_.empty());
    mark_recent(connection);
    show_company();
}

/// The list never shows another database as chosen than the one that is.
void StartWindow::mark_recent(const std::string& connection) {
    int row = recent_->count() - 1;
    while (row >= 0 && to_std(recent_->item(row)->data(Qt::UserRole).toString()) != connection) --row;
    recent_->setCurrentRow(row);
    forget_->setEnabled(row >= 0);
}

int StartWindow::company() const { return companies_->currentData().toInt(); }
std::string StartWindow::company_name() const { return to_std(companies_->currentText().section("  ", 1)); }

void StartWindow::show_company() {
    summary_->clear();
    if (connection_.empty() || companies_->currentIndex() < 0) return;
    try {
        const auto db = abrir_sesion(connection_);
        if (const auto missing = falta_para_trabajar(*db, company()); !missing.empty())
            return summary_->setText(QString::fromUtf8("⚠ ") + to_qt(missing));
        const auto years = anios_configurados(*db, company());
        const auto c = leer_configuracion_anual(*db, company(), years.front());
        const auto day = [](const std::optional<Fecha>& f) {
            return f ? to_qt(fecha_dmy(*f)) : QString("hoy");
        };
        QString text = QString::fromUtf8("Año contable %1\nDigitación del %2 al %3")
                           .arg(years.front())
                           .arg(day(c->f_digi_inicial), day(c->f_digi_final));
        const auto remarks = revisar_configuracion(*db, *c);
        if (!remarks.empty())
            text += to_qt("\n⚠ Configuración incompleta: " +
                          cuantos(static_cast<std::int64_t>(remarks.size()), "observación", "observaciones"));
        summary_->setText(text);
    } catch (const std::exception& e) {
        show_problem(e.what());
    }
}

void StartWindow::open_file() {
    const QString file = qt::choose_file(this, {"Abrir base de datos", {FILTRO}, to_qt(folder_.string())});
    if (!file.isEmpty()) choose("sqlite:" + to_std(file));
}

QString StartWindow::ask_new_file(const char* title, const char* name) {
    return qt::choose_file(
        this, {QString::fromUtf8(title), {FILTRO}, to_qt((folder_ / name).string()), qt::Choose::save});
}

void StartWindow::create_database() {
    const QString file = ask_new_file("Crear base de datos", "contabilidad.db");
    if (file.isEmpty()) return;
    try {
        dbtools::crear_esquema("sqlite:" + to_std(file));
        choose("sqlite:" + to_std(file));
        create_company();
    } catch (const std::exception& e) {
        show_problem(e.what());
    }
}

void StartWindow::create_demo() {
    const QString file = ask_new_file("Crear base de demostración", "demo.db");
    if (file.isEmpty()) return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        demo::crear_demo("sqlite:" + to_std(file));
        proteger(*abrir_sesion("sqlite:" + to_std(file)), 1, 1, true, true);
        choose("sqlite:" + to_std(file));
    } catch (const std::exception& e) {
        show_problem(e.what());
    }
    QApplication::restoreOverrideCursor();
}

void StartWindow::back_up() { respaldar_base(connection_, this); }

void StartWindow::restore() {
    const auto restored = restaurar_base(to_std(address_->text()), this);
    if (!restored) return;
    anotar_reciente(archivo_recientes(folder_), *restored);
    fill_recent();
    choose(*restored);
}

void StartWindow::forget() {
    if (recent_->currentItem() == nullptr) return;
    olvidar_reciente(archivo_recientes(folder_),
                     to_std(recent_->currentItem()->data(Qt::UserRole).toString()));
    fill_recent();
    choose(recent_->count() > 0 ? to_std(recent_->item(0)->data(Qt::UserRole).toString()) : std::string());
}

void StartWindow::create_company() {
    try {
        NuevaEmpresa window(connection_, RelojSistema{}.hoy(), this);
        if (window.exec() != QDialog::Accepted) return;
        anotar_reciente(archivo_recientes(folder_), connection_);
        fill_recent();
        choose(connection_);
        companies_->setCurrentIndex(companies_->findData(window.codigo()));
        start_->setFocus();
    } catch (const std::exception& e) {
        show_problem(e.what());
    }
}

void StartWindow::configure() {
    try {
        ConfiguracionWindow window(connection_, company(), company_name(), RelojSistema{}.hoy(), this);
        if (window.exec() == QDialog::Accepted) show_company();
    } catch (const std::exception& e) {
        show_problem(e.what());
    }
}

void StartWindow::show_books() {
    try {
        VentanaLibros window(connection_, company(), company_name(), RelojSistema{}.hoy(), this);
        window.setModal(true);
        window.abrir(libros::Libro::balance);
        window.exec();
    } catch (const std::exception& e) {
        show_problem(e.what());
    }
}

void StartWindow::search_companies() {
    try {
        VentanaEmpresas window(conexion_del_directorio(folder_), this);
        if (window.exec() != QDialog::Accepted) return;
        choose(window.elegida().conexion);
        companies_->setCurrentIndex(companies_->findData(window.elegida().empresa));
        users_->setFocus();
    } catch (const std::exception& e) {
        show_problem(e.what());
    }
}

Eleccion_inicial StartWindow::eleccion() const {
    anotar_reciente(archivo_recientes(folder_), connection_);
    return {connection_, folder_ / "print.db", company(), users_->currentData().toInt()};
}

} // namespace quorvel::app
