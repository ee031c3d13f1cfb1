#include "app/empresas/VentanaEmpresas.h"

#include "dbtools/directorio.h"
#include "dbtools/estado_empresas.h"
#include "qt/text.h"
#include "text/letras_utf8.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>
#include <cstdlib>
#include <fstream>

namespace quorvel::app {

using qt::to_qt;
using qt::to_std;

namespace {

constexpr const char* VER_ESTADO = "&Estado de todas";

QString cuantas(qsizetype n) { return n == 1 ? "1 empresa" : QString("%1 empresas").arg(n); }

} // namespace

std::string conexion_del_directorio(const std::filesystem::path& carpeta) {
    if (const char* const conexion = std::getenv("QUORVEL_DIRECTORIO")) return conexion;
    std::string linea;
    std::ifstream archivo(carpeta / "directorio.txt");
    std::getline(archivo, linea);
    return recortar(linea);
}

VentanaEmpresas::VentanaEmpresas(const std::string& directorio, QWidget* parent)
    : QDialog(parent), directorio_(dbtools::abrir_base(directorio, dbtools::Abrir::existente)) {
    setWindowTitle("Empresas");
    setObjectName("empresas");
    texto_ = new QLineEdit(this);
    texto_->setPlaceholderText("Nombre, una de sus palabras o RUT");
    texto_->setClearButtonEnabled(true);
    auto* etiqueta = new QLabel("&Buscar", this);
    etiqueta->setBuddy(texto_);
    lista_ = new ListaEmpresas(this);
    orden_ = new QSortFilterProxyModel(this);
    orden_->setSourceModel(lista_);
    orden_->setSortRole(Qt::UserRole);
    tabla_ = new QTableView(this);
    tabla_->setModel(orden_);
    tabla_->setSortingEnabled(true);
    tabla_->sortByColumn(-1, Qt::AscendingOrder);
    tabla_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabla_->setSelectionMode(QAbstractItemView::SingleSelection);
    tabla_->setAlternatingRowColors(true);
    tabla_->setTabKeyNavigation(false);
    tabla_->setAccessibleName("Empresas");
    tabla_->verticalHeader()->hide();
    tabla_->horizontalHeader()->setStretchLastSection(true);
    constexpr int ANCHOS[] = {50, 110, 280, 100, 120, 120};
    for (int i = 0; i < static_cast<int>(std::size(ANCHOS)); ++i) tabla_->setColumnWidth(i, ANCHOS[i]);
    aviso_ = new QLabel(this);
    aviso_->setWordWrap(true);
    aviso_->setTextFormat(Qt::PlainText);
    estado_ = new QPushButton(VER_ESTADO, this);
    estado_->setToolTip("Descuadres, meses sin cerrar y última actividad, base por base");
    abrir_ = new QPushButton("&Abrir", this);
    auto* cerrar = new QPushButton("&Cerrar", this);
    for (QPushButton* b : {estado_, cerrar}) b->setAutoDefault(false);
    abrir_->setDefault(true);
    auto* arriba = new QHBoxLayout;
    arriba->addWidget(etiqueta);
    arriba->addWidget(texto_, 1);
    auto* abajo = new QHBoxLayout;
    abajo->addWidget(aviso_, 1);
    for (QPushButton* b : {estado_, abrir_, cerrar}) abajo->addWidget(b);
    auto* columna = new QVBoxLayout(this);
    columna->addLayout(arriba);
    columna->addWidget(tabla_, 1);
    columna->addLayout(abajo);
    connect(texto_, &QLineEdit::textChanged, this, &VentanaEmpresas::buscar);
    connect(estado_, &QPushButton::clicked, this, &VentanaEmpresas::ver_estado);
    connect(abrir_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::reject);
    connect(this, &QDialog::finished, this, [this] { parar_ = true; });
    connect(tabla_, &QTableView::activated, this, [this] { accept(); });
    connect(tabla_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { mostrar_seleccion(); });
    resize(1000, 520);
    buscar("");
}

void VentanaEmpresas::buscar(const QString& texto) {
    if (leyendo_) parar_ = true;
    try {
        std::vector<ListaEmpresas::Fila> filas;
        for (auto& e : dbtools::buscar_en_directorio(*directorio_, to_std(texto)))
            filas.push_back(
                {e.empresa, std::move(e.conexion), std::move(e.nombre), std::move(e.rut), {}, {}, {}});
        lista_->poner(std::move(filas));
        aviso_->setText(lista_->rowCount() == 0 ? QString::fromUtf8("Ninguna empresa empieza así")
                                                : QString());
    } catch (const std::exception& e) {
        aviso_->setText(QString::fromUtf8("⚠ ") + to_qt(e.what()));
    }
    tabla_->setCurrentIndex(orden_->index(0, 0));
    mostrar_seleccion();
}

void VentanaEmpresas::ver_estado() {
    if (leyendo_) {
        parar_ = true;
        return;
    }
    texto_->clear();
    leyendo_ = true, parar_ = false;
    estado_->setText("&Detener");
    QStringList fallas;
    try {
        const auto bases = dbtools::bases_del_directorio(*directorio_);
        lista_->poner({});
        for (std::size_t n = 0; n < bases.size() && !parar_; ++n) {
            aviso_->setText(QString("Base %1 de %2: ").arg(n + 1).arg(bases.size()) + to_qt(bases[n]));
            QApplication::processEvents();
            try {
                std::vector<ListaEmpresas::Fila> filas;
                for (auto& e : dbtools::estado_de_empresas(bases[n]))
                    filas.push_back({e.empresa, bases[n], std::move(e.nombre), std::move(e.rut),
                                     e.descuadrados, e.meses_abiertos, std::move(e.ultima)});
                if (!parar_) lista_->agregar(filas);
            } catch (const std::exception& e) {
                fallas << to_qt(bases[n] + ": " + e.what());
            }
        }
    } catch (const std::exception& e) {
        fallas << to_qt(e.what());
    }
    leyendo_ = false;
    estado_->setText(VER_ESTADO);
    aviso_->setText(fallas.isEmpty() ? cuantas(lista_->rowCount())
                                     : QString::fromUtf8("⚠ ") + fallas.join('\n'));
    tabla_->setCurrentIndex(orden_->index(0, 0));
    mostrar_seleccion();
}

void VentanaEmpresas::mostrar_seleccion() { abrir_->setEnabled(tabla_->currentIndex().isValid()); }

const ListaEmpresas::Fila& VentanaEmpresas::elegida() const {
    return lista_->fila(orden_->mapToSource(tabla_->currentIndex()).row());
}

} // namespace quorvel::app
