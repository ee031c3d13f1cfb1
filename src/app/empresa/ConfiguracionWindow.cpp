#include "app/empresa/ConfiguracionWindow.h"

#include "app/empresa/formulario.h"
#include "qt/icons.h"
#include "qt/screen_room.h"
#include "qt/text.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>

namespace quorvel::app {

using qt::to_qt;
using qt::to_std;

ConfiguracionWindow::ConfiguracionWindow(const std::string& conexion, int empresa,
                                         const std::string& n_empresa, Fecha hoy, QWidget* parent)
    : QDialog(parent), db_(abrir_sesion(conexion)), empresa_(empresa) {
    setObjectName("configuracion");
    setWindowTitle(QString::fromUtf8("Configuración contable — ") + to_qt(n_empresa));
    setWindowIcon(qt::program_icon());
    auto* dentro = new QWidget(this);
    auto* centro = new QHBoxLayout(dentro);
    centro->setContentsMargins(0, 0, 0, 0);
    centro->setSpacing(14);
    centro->addWidget(construir_cuentas(), 3);
    centro->addWidget(construir_anio(), 2);
    auto* columna = new QVBoxLayout(this);
    columna->setContentsMargins(16, 14, 16, 14);
    columna->setSpacing(10);
    columna->addWidget(qt::scroll_area(dentro, this), 1);
    columna->addLayout(construir_botones());
    auto anios = anios_configurados(*db_, empresa);
    if (anios.empty()) anios.push_back(anio(hoy));
    for (const int a : anios) anios_->addItem(QString::number(a), a);
    connect(anios_, &QComboBox::currentIndexChanged, this,
            [this] { mostrar(anios_->currentData().toInt()); });
    mostrar(anios.front());
    qt::resize_within_screen(*this, {980, 490});
}

ConfiguracionWindow::~ConfiguracionWindow() = default;

QLayout* ConfiguracionWindow::construir_botones() {
    estado_ = new QLabel(this);
    estado_->setTextFormat(Qt::PlainText);
    estado_->setWordWrap(true);
    auto* guardar = new QPushButton("&Grabar", this);
    guardar->setToolTip("F5");
    guardar->setDefault(true);
    auto* cerrar = new QPushButton("&Cerrar", this);
    cerrar->setAutoDefault(false);
    const auto al_grabar = [this] {
        if (grabar()) accept();
    };
    connect(guardar, &QPushButton::clicked, this, al_grabar);
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, al_grabar);
    connect(cerrar, &QPushButton::clicked, this, [this] { reject(); });
    auto* abajo = new QHBoxLayout;
    abajo->addWidget(estado_, 1);
    abajo->addWidget(guardar);
    abajo->addWidget(cerrar);
    return abajo;
}

QWidget* ConfiguracionWindow::construir_cuentas() {
    auto* zona = new QGroupBox("Cuentas", this);
    auto* columna = new QVBoxLayout(zona);
    izquierda_ = new Formulario(zona);
    const auto cuentas = cuentas_imputables(*db_);
    for (const CuentaConfigurada& c : cuentas_configuradas())
        izquierda_->campo(c.columna, QString::fromUtf8(c.titulo),
                          cuentas_[c.columna] = new CajaCuenta(cuentas, izquierda_));
    columna->addWidget(izquierda_);
    columna->addStretch(1);
    return zona;
}

QWidget* ConfiguracionWindow::construir_anio() {
    auto* zona = new QGroupBox(QString::fromUtf8("Año y período de digitación"), this);
    auto* columna = new QVBoxLayout(zona);
    derecha_ = new Formulario(zona);
    anios_ = new QComboBox(derecha_);
    derecha_->campo("anio", QString::fromUtf8("&Año"), anios_);
    const auto caja = [&](const char* campo, const QString& rotulo, const QString& pista) {
        auto* c = new QLineEdit(derecha_);
        c->setPlaceholderText(pista);
        derecha_->campo(campo, rotulo, c);
        return c;
    };
    desde_ = caja("f_digi_inicial", "&Desde", QString::fromUtf8("dd/mm/aaaa (vacío: sólo hoy)"));
    hasta_ = caja("f_digi_final", "&Hasta", QString::fromUtf8("dd/mm/aaaa (vacío: sólo hoy)"));
    cierre_ = new QLabel(derecha_);
    cierre_->setTextFormat(Qt::PlainText);
    derecha_->campo("cierre", "Cierre anual", cierre_);
    elaborado_ = caja("elaborado", "Firma &1", "Elaborado");
    revisado_ = caja("revisado", "Firma &2", "Revisado");
    aprobado_ = caja("aprobado", "Firma &3", "Aprobado");
    columna->addWidget(derecha_);
    auto* ayuda = new QLabel(
        QString::fromUtf8("En una cuenta escriba parte del código o del nombre y elija con las flechas. Las "
                          "diez primeras deben estar para grabar comprobantes, cualquiera sea el libro; las "
                          "dos últimas reciben el resultado al cerrar el año."),
        zona);
    ayuda->setWordWrap(true);
    ayuda->setForegroundRole(QPalette::PlaceholderText);
    columna->addSpacing(8);
    columna->addWidget(ayuda);
    columna->addStretch(1);
    return zona;
}

void ConfiguracionWindow::mostrar(int anio) {
    ConfiguracionAnual c;
    c.anio = anio;
    if (auto guardada = leer_configuracion_anual(*db_, empresa_, anio)) c = *guardada;
    desde_->setText(c.f_digi_inicial ? to_qt(fecha_dmy(*c.f_digi_inicial)) : QString());
    hasta_->setText(c.f_digi_final ? to_qt(fecha_dmy(*c.f_digi_final)) : QString());
    for (auto& [columna, caja] : cuentas_) caja->poner(c.cuentas[columna]);
    elaborado_->setText(to_qt(c.elaborado));
    revisado_->setText(to_qt(c.revisado));
    aprobado_->setText(to_qt(c.aprobado));
    cierre_->setText(c.cierre.empty() ? QString::fromUtf8("no generado") : to_qt(c.cierre));
    (void)revisar();
}

ConfiguracionAnual ConfiguracionWindow::leer() const {
    ConfiguracionAnual c;
    c.empresa = empresa_;
    c.anio = anios_->currentData().toInt();
    c.f_digi_inicial = leer_fecha(to_std(desde_->text().trimmed()));
    c.f_digi_final = leer_fecha(to_std(hasta_->text().trimmed()));
    for (const auto& [columna, caja] : cuentas_) c.cuentas[columna] = caja->codigo();
    c.elaborado = to_std(elaborado_->text());
    c.revisado = to_std(revisado_->text());
    c.aprobado = to_std(aprobado_->text());
    return c;
}

bool ConfiguracionWindow::revisar() {
    const ConfiguracionAnual c = leer();
    auto observaciones = revisar_configuracion(*db_, c);
    const auto fecha = [&](const QLineEdit* caja, const std::optional<Fecha>& leida, const char* campo) {
        if (!leida && !caja->text().trimmed().isEmpty())
            observaciones.push_back({campo, "No es una fecha: dd/mm/aaaa"});
    };
    fecha(desde_, c.f_digi_inicial, "f_digi_inicial");
    fecha(hasta_, c.f_digi_final, "f_digi_final");
    std::vector<Observacion> de_cuentas, otras;
    for (Observacion& o : observaciones)
        (cuenta_configurada(o.campo) != nullptr ? de_cuentas : otras).push_back(std::move(o));
    const bool grave_derecha = derecha_->observar(otras);
    const bool grave = izquierda_->observar(de_cuentas) || grave_derecha;
    estado_->setText(grave ? QString::fromUtf8("✖ Hay datos que corregir.") : QString());
    return !grave;
}

bool ConfiguracionWindow::grabar() {
    try {
        if (!revisar()) return false;
        grabar_configuracion(*db_, leer());
        return true;
    } catch (const std::exception& e) {
        estado_->setText(QString::fromUtf8("✖ ") + to_qt(e.what()));
        return false;
    }
}

} // namespace quorvel::app
