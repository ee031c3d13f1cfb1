#include "app/historia/VentanaProteccion.h"

#include "empresa/configuracion_anual.h"
#include "historia/comenzar.h"
#include "qt/icons.h"
#include "qt/screen_room.h"
#include "qt/text.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QProgressDialog>
#include <QPushButton>

namespace quorvel::app {

using qt::to_qt;

VentanaProteccion::VentanaProteccion(const std::string& conexion, int empresa, int usuario,
                                     const std::string& n_empresa, Fecha hoy, QWidget* parent)
    : QDialog(parent), db_(abrir_sesion(conexion)), empresa_(empresa), usuario_(usuario) {
    setObjectName("proteccion");
    setWindowTitle(QString::fromUtf8("Protección y meses bloqueados — ") + to_qt(n_empresa));
    setWindowIcon(qt::program_icon());
    const Proteccion p = leer_proteccion(*db_, empresa);
    historia_ = new QCheckBox(QString::fromUtf8("Guardar la &historia de cada comprobante"), this);
    historia_->setChecked(p.historia);
    cierre_ = new QCheckBox(QString::fromUtf8("&Proteger los años cerrados y los meses bloqueados"), this);
    cierre_->setChecked(p.cierre);
    auto* ayuda = new QLabel(
        QString::fromUtf8("En un mes bloqueado no se graba, anula, elimina, corta ni importa nada. "
                          "Los años cerrados están protegidos del mismo modo."),
        this);
    ayuda->setWordWrap(true);
    ayuda->setForegroundRole(QPalette::PlaceholderText);
    estado_ = new QLabel(this);
    estado_->setTextFormat(Qt::PlainText);
    estado_->setWordWrap(true);
    auto* grabar_ = new QPushButton("&Grabar", this);
    grabar_->setDefault(true);
    auto* cerrar = new QPushButton("&Cerrar", this);
    cerrar->setAutoDefault(false);
    connect(grabar_, &QPushButton::clicked, this, [this] {
        if (grabar()) accept();
    });
    connect(cerrar, &QPushButton::clicked, this, [this] { reject(); });
    auto* abajo = new QHBoxLayout;
    abajo->addWidget(estado_, 1);
    abajo->addWidget(grabar_);
    abajo->addWidget(cerrar);
    auto* columna = new QVBoxLayout(this);
    columna->setContentsMargins(16, 14, 16, 14);
    columna->setSpacing(10);
    columna->addWidget(historia_);
    columna->addWidget(cierre_);
    columna->addWidget(construir_meses(hoy));
    columna->addWidget(ayuda);
    columna->addLayout(abajo);
    connect(cierre_, &QCheckBox::toggled, this, [this] { mostrar_meses(); });
    qt::resize_within_screen(*this, {520, 360});
}

VentanaProteccion::~VentanaProteccion() = default;

QWidget* VentanaProteccion::construir_meses(Fecha hoy) {
    auto* zona = new QGroupBox("Meses bloqueados", this);
    auto* cuadro = new QGridLayout(zona);
    anio_ = new QComboBox(zona);
    anio_->setAccessibleName(QString::fromUtf8("Año"));
    auto anios = anios_configurados(*db_, empresa_);
    if (anios.empty()) anios.push_back(anio(hoy));
    for (const int a : anios) anio_->addItem(QString::number(a), a);
    cuadro->addWidget(anio_, 0, 0);
    const QLocale chile(QLocale::Spanish, QLocale::Chile);
    for (int m = 0; m < 12; ++m) {
        auto* caja = meses_[static_cast<std::size_t>(m)] =
            new QCheckBox(chile.standaloneMonthName(m + 1), zona);
        cuadro->addWidget(caja, 1 + m / 4, m % 4);
    }
    connect(anio_, &QComboBox::currentIndexChanged, this, [this] { mostrar_meses(); });
    mostrar_meses();
    return zona;
}

void VentanaProteccion::mostrar_meses() {
    const Proteccion p = leer_proteccion(*db_, empresa_);
    for (int m = 1; m <= 12; ++m) {
        QCheckBox* caja = meses_[static_cast<std::size_t>(m - 1)];
        caja->setChecked(p.meses.find(texto_mes(anio_->currentData().toInt(), m)) != std::string::npos);
        caja->setEnabled(cierre_->isChecked());
    }
}

bool VentanaProteccion::grabar() {
    try {
        std::array<bool, 12> quiere{};
        for (std::size_t m = 0; m < 12; ++m) quiere[m] = meses_[m]->isChecked();
        QProgressDialog avance("Comenzando la historia con lo que hay…", QString(), 0, 0, this);
        avance.setWindowModality(Qt::WindowModal);
        avance.setMinimumDuration(800);
        proteger(*db_, empresa_, usuario_, historia_->isChecked(), cierre_->isChecked(),
                 [&](long hechos, long total) {
                     avance.setMaximum(static_cast<int>(total));
                     avance.setValue(static_cast<int>(hechos));
                 });
        if (cierre_->isChecked())
            for (int m = 1; m <= 12; ++m)
                bloquear_mes(*db_, empresa_, usuario_, anio_->currentData().toInt(), m,
                             quiere[static_cast<std::size_t>(m - 1)]);
        return true;
    } catch (const std::exception& e) {
        estado_->setText(QString::fromUtf8("✖ ") + to_qt(e.what()));
        return false;
    }
}

} // namespace quorvel::app
