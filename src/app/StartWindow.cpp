#include "app/StartWindow.h"

#include "app/db/base.h"
#include "app/db/demo.h"
#include "app/db/esquema.h"
#include "app/recientes.h"
#include "qt/text.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvel {

using qt::to_qt;
using qt::to_std;

namespace {
constexpr const char* FILTRO = "Base de datos (*.db)";
std::filesystem::path archivo_recientes(const std::filesystem::path& carpeta) {
    return carpeta / "recientes.txt";
}
} // namespace

StartWindow::StartWindow(std::filesystem::path folder) : folder_(std::move(folder)) {
    setWindowTitle("Quorvel");
    setObjectName("inicio");
    build();
    for (const auto& connection : leer_recientes(archivo_recientes(folder_)))
        recent_->addItem(to_qt(connection));
    if (recent_->count() > 0) {
        recent_->setCurrentRow(0);
        choose(to_std(recent_->item(0)->text()));
    } else {
        choose({});
    }
}

void StartWindow::build() {
    recent_ = new QListWidget(this);
    recent_->setAccessibleName("Bases de datos recientes");
    connect(recent_, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { choose(to_std(item->text())); });
    connect(recent_, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        choose(to_std(item->text()));
        if (start_->isEnabled()) accept();
    });
    const auto button = [this](const char* text, auto action) {
        auto* made = new QPushButton(QString::fromUtf8(text), this);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, action);
        return made;
    };
    auto* actions = new QHBoxLayout;
    actions->addWidget(button("&Abrir archivo…", [this] { choose_file(); }));
    actions->addWidget(button("&Crear base…", [this] { create_file(false); }));
    actions->addWidget(button("Crear &demostración…", [this] { create_file(true); }));
    actions->addStretch(1);
    address_ = new QLineEdit(this);
    address_->setPlaceholderText("sqlite:/ruta/contabilidad.db  o  postgresql://usuario@servidor/base");
    connect(address_, &QLineEdit::returnPressed, this, [this] { choose(to_std(address_->text())); });
    companies_ = new QComboBox(this);
    users_ = new QComboBox(this);
    auto* fields = new QFormLayout;
    fields->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    fields->addRow(QString::fromUtf8("Co&nexión"), address_);
    fields->addRow("&Empresa", companies_);
    fields->addRow("&Usuario", users_);
    problem_ = new QLabel(this);
    problem_->setWordWrap(true);
    problem_->setTextFormat(Qt::PlainText);
    start_ = button("&Iniciar", [this] { accept(); });
    start_->setDefault(true);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(problem_, 1);
    bottom->addWidget(start_);
    bottom->addWidget(button("Salir", [this] { reject(); }));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(10);
    auto* title = new QLabel("Bases de datos recientes", this);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    column->addWidget(title);
    column->addWidget(recent_, 1);
    column->addLayout(actions);
    column->addLayout(fields);
    column->addLayout(bottom);
    resize(620, 420);
}

void StartWindow::show_problem(const std::string& text) { problem_->setText(to_qt(text)); }

void StartWindow::choose(const std::string& connection) {
    companies_->clear();
    users_->clear();
    connection_.clear();
    address_->setText(to_qt(connection));
    if (connection.empty()) {
        show_problem("Abra una base de datos o cree la de demostración.");
        start_->setEnabled(false);
        return;
    }
    try {
        const std::string normal = normalizar_conexion(connection);
        const auto db = abrir_sesion(normal);
        for (const auto& row : leer_empresas(*db))
            companies_->addItem(to_qt(std::to_string(row.codigo) + "  " + row.nombre), row.codigo);
        for (const auto& row : leer_usuarios(*db))
            users_->addItem(to_qt(std::to_string(row.codigo) + "  " + row.nombre), row.codigo);
        connection_ = normal;
        const bool ready = companies_->count() > 0 && users_->count() > 0;
        show_problem(ready ? "" : "La base de datos no tiene empresas o usuarios.");
        start_->setEnabled(ready);
    } catch (const std::exception& e) {
        show_problem(e.what());
        start_->setEnabled(false);
    }
}

void StartWindow::choose_file() {
    const QString file =
        QFileDialog::getOpenFileName(this, "Abrir base de datos", to_qt(folder_.string()), FILTRO);
    if (!file.isEmpty()) choose("sqlite:" + to_std(file));
}

void StartWindow::create_file(bool demo) {
    QString file = QFileDialog::getSaveFileName(
        this, demo ? QString::fromUtf8("Crear base de demostración") : QString("Crear base de datos"),
        to_qt((folder_ / (demo ? "demo.db" : "contabilidad.db")).string()), FILTRO);
    if (file.isEmpty()) return;
    if (!file.endsWith(".db")) file += ".db";
    const std::string connection = "sqlite:" + to_std(file);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        if (demo)
            crear_demo(connection);
        else
            crear_esquema(connection);
        choose(connection);
    } catch (const std::exception& e) {
        show_problem(e.what());
    }
    QApplication::restoreOverrideCursor();
}

Eleccion_inicial StartWindow::eleccion() const {
    anotar_reciente(archivo_recientes(folder_), connection_);
    return {connection_, folder_ / "print.db", companies_->currentData().toInt(),
            users_->currentData().toInt()};
}

} // namespace quorvel
