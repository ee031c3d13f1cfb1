#include "app/libros/VentanaMeses.h"

#include "app/avisos.h"
#include "qt/text.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace quorvel::app {

using qt::to_qt;

namespace {

constexpr int LUGAR = Qt::UserRole; ///< of a row: date, kind and number of its voucher
constexpr const char* QUE[] = {"Descuadrado", "Sin terminar", "Número que falta"};

QString nombre_mes(int mes) {
    const QString nombre = QLocale(QLocale::Spanish).standaloneMonthName(mes);
    return nombre.left(1).toUpper() + nombre.mid(1);
}

QString cuantos(int n, const char* uno, const char* varios) {
    return QString("%1 %2").arg(n).arg(QString::fromUtf8(n == 1 ? uno : varios));
}

} // namespace

VentanaMeses::VentanaMeses(const std::string& conexion, int empresa, const std::string& n_empresa, Fecha hoy,
                           Acciones acciones, QWidget* parent)
    : QDialog(parent), db_(abrir_sesion(conexion)), empresa_(empresa), hoy_(hoy),
      acciones_(std::move(acciones)), anio_(new QSpinBox), lista_(new QTreeWidget), pie_(new QLabel) {
    setWindowTitle(QString::fromUtf8("Revisión del mes · ") + to_qt(n_empresa));
    resize(860, 560);
    anio_->setRange(1950, 2100);
    anio_->setValue(anio(hoy));
    auto* nombre = new QLabel("&Año");
    nombre->setBuddy(anio_);
    auto* releer = new QPushButton("&Leer otra vez (F5)");
    auto* arriba = new QHBoxLayout;
    for (QWidget* w : {static_cast<QWidget*>(nombre), static_cast<QWidget*>(anio_)}) arriba->addWidget(w);
    arriba->addStretch(1);
    arriba->addWidget(releer);
    lista_->setColumnCount(4);
    lista_->setHeaderLabels({"Mes", "Fecha", "Comprobante", "Qué revisar"});
    lista_->setAccessibleName("Lo que falta en cada mes");
    lista_->setUniformRowHeights(true);
    lista_->setAlternatingRowColors(true);
    auto* columna = new QVBoxLayout(this);
    columna->addLayout(arriba);
    columna->addWidget(lista_, 1);
    columna->addWidget(pie_);
    connect(anio_, &QSpinBox::valueChanged, this, [this] { actualizar(); });
    connect(releer, &QPushButton::clicked, this, [this] { actualizar(); });
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, [this] { actualizar(); });
    connect(lista_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* fila) { abrir(fila); });
    releer->setAutoDefault(false); // Enter is for the list
    lista_->setFocus();
    actualizar();
}

VentanaMeses::~VentanaMeses() = default;

void VentanaMeses::actualizar() {
    lista_->clear();
    int pendientes = 0;
    std::array<QTreeWidgetItem*, 13> filas{};
    try {
        const auto meses = libros::revisar_meses(*db_, empresa_, anio_->value());
        for (int m = 1; m <= 12; ++m) {
            const libros::MesRevisado& revisado = meses[static_cast<std::size_t>(m - 1)];
            const bool por_venir = anio_->value() == anio(hoy_) && m > mes(hoy_);
            if (revisado.comprobantes == 0 && por_venir) continue;
            filas[static_cast<std::size_t>(m)] = agregar_mes(m, revisado);
            pendientes += static_cast<int>(revisado.pendientes.size());
        }
        pendientes += agregar_borradores(filas);
    } catch (const std::exception& e) {
        return avisar_problema(this, to_qt(e.what()));
    }
    for (int i = 0; i < 4; ++i) lista_->resizeColumnToContents(i);
    lista_->setCurrentItem(lista_->topLevelItem(0));
    pie_->setText(pendientes == 0 ? QString::fromUtf8("✓ Nada que revisar en el año")
                                  : cuantos(pendientes, "cosa por revisar", "cosas por revisar") +
                                        QString::fromUtf8("  ·  Enter abre el comprobante  ·  Esc cierra"));
}

QTreeWidgetItem* VentanaMeses::agregar_mes(int mes, const libros::MesRevisado& revisado) {
    auto* titulo = new QTreeWidgetItem(lista_);
    const int n = static_cast<int>(revisado.pendientes.size());
    titulo->setText(0, nombre_mes(mes));
    titulo->setSizeHint(3, {0, lista_->fontMetrics().height() + 10}); // every row is as high as the first
    titulo->setText(2, cuantos(revisado.comprobantes, "comprobante", "comprobantes"));
    titulo->setText(3, revisado.comprobantes == 0 ? "sin comprobantes"
                       : n == 0                   ? QString::fromUtf8("✓ nada que revisar")
                                : QString::fromUtf8("⚠ ") + QString::number(n) + " por revisar");
    QFont negrita = titulo->font(0);
    negrita.setBold(true);
    titulo->setFont(0, negrita);
    for (const libros::Pendiente& p : revisado.pendientes) {
        auto* fila = new QTreeWidgetItem(titulo);
        fila->setText(0, QString::fromUtf8(QUE[static_cast<int>(p.que)]));
        fila->setText(1, to_qt(fecha_dmy(p.donde.f_comp)));
        fila->setText(2, to_qt(p.donde.documento + " Nro. " + p.donde.num_docum));
        fila->setText(3, to_qt(p.detalle));
        fila->setData(0, LUGAR,
                      QStringList{fila->text(1), to_qt(p.donde.documento), to_qt(p.donde.num_docum)});
    }
    titulo->setExpanded(n > 0);
    return titulo;
}

int VentanaMeses::agregar_borradores(const std::array<QTreeWidgetItem*, 13>& meses) {
    int agregados = 0;
    for (const BorradorLibre& b : acciones_.borradores()) {
        const auto fecha = leer_fecha(b.fecha);
        QTreeWidgetItem* titulo =
            fecha && anio(*fecha) == anio_->value() ? meses[static_cast<std::size_t>(mes(*fecha))] : nullptr;
        if (titulo == nullptr) continue;
        auto* fila = new QTreeWidgetItem(
            titulo, {"Sin grabar", to_qt(b.fecha), to_qt(b.documento + " Nro. " + b.numero), to_qt(b.glosa)});
        fila->setData(0, LUGAR, QStringList{to_qt(b.archivo.string())});
        titulo->setExpanded(true);
        ++agregados;
    }
    return agregados;
}

void VentanaMeses::abrir(QTreeWidgetItem* fila) {
    const QStringList lugar = fila->data(0, LUGAR).toStringList();
    if (lugar.size() == 1) return acciones_.recuperar(qt::to_std(lugar[0]));
    if (lugar.size() != 3) return;
    if (const auto fecha = leer_fecha(qt::to_std(lugar[0])))
        acciones_.abrir({*fecha, qt::to_std(lugar[1]), qt::to_std(lugar[2])});
}

} // namespace quorvel::app
