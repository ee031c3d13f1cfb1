#include "app/empresa/NuevaEmpresa.h"

#include "app/avisos.h"
#include "app/empresa/formulario.h"
#include "dbtools/datos.h"
#include "historia/comenzar.h"
#include "platform/files/engine_files.h"
#include "qt/file_dialog.h"
#include "qt/icons.h"
#include "qt/screen_room.h"
#include "qt/text.h"
#include "text/cuantos.h"

#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>

namespace quorvel::app {

using qt::to_qt;
using qt::to_std;

namespace {
constexpr const char* PLANTILLA = "plan/plan_general.csv";
constexpr qint64 MAYOR_ARCHIVO = 32 * 1024 * 1024;

std::string contadas(std::size_t cuentas) {
    return cuantos(static_cast<std::int64_t>(cuentas), "cuenta", "cuentas");
}
} // namespace

NuevaEmpresa::NuevaEmpresa(const std::string& conexion, Fecha hoy, QWidget* parent)
    : QDialog(parent), db_(abrir_sesion(conexion)) {
    setObjectName("empresa_nueva");
    setWindowTitle("Nueva empresa");
    setWindowIcon(qt::program_icon());
    forma_ = new Formulario(this);
    const auto caja = [&](const char* campo, const QString& rotulo, const QString& pista = {}) {
        auto* c = new QLineEdit(forma_);
        c->setPlaceholderText(pista);
        forma_->campo(campo, rotulo, c);
        return c;
    };
    codigo_ = caja("codigo", QString::fromUtf8("&Código"), "1 a 32767");
    nombre_ = caja("nombre", "&Nombre");
    rut_ = caja("rut", "&RUT", "76.123.456-0");
    direccion_ = caja("direccion", QString::fromUtf8("D&irección"));
    giro_ = caja("giro", "&Giro");
    anio_ = caja("anio", QString::fromUtf8("&Año"));
    desde_ = caja("desde", "&Desde", "dd/mm/aaaa");
    hasta_ = caja("hasta", "&Hasta", "dd/mm/aaaa");
    usuario_ = caja("usuario", "&Usuario", "Nombre de quien trabaja");
    usuario_->setEnabled(db_->NewRecord("select top 1 usuario from admusuario")->eof());
    if (!usuario_->isEnabled()) usuario_->setPlaceholderText("La base ya tiene usuarios");
    connect(anio_, &QLineEdit::textEdited, this, [this] { proponer_periodo(); });
    auto* dentro = new QWidget(this);
    auto* centro = new QHBoxLayout(dentro);
    centro->setContentsMargins(0, 0, 0, 0);
    centro->setSpacing(14);
    auto* datos = new QGroupBox("Empresa", this);
    auto* apilados = new QVBoxLayout(datos);
    apilados->addWidget(forma_);
    apilados->addStretch(1);
    centro->addWidget(datos, 1);
    centro->addWidget(construir_plan(), 1);
    estado_ = new QLabel(this);
    estado_->setTextFormat(Qt::PlainText);
    estado_->setWordWrap(true);
    auto* hacer = new QPushButton("Crear &empresa", this);
    hacer->setDefault(true);
    auto* cancelar = new QPushButton("Cancelar", this);
    cancelar->setAutoDefault(false);
    connect(hacer, &QPushButton::clicked, this, [this] {
        if (crear()) accept();
    });
    connect(cancelar, &QPushButton::clicked, this, [this] { reject(); });
    auto* abajo = new QHBoxLayout;
    abajo->addWidget(estado_, 1);
    abajo->addWidget(hacer);
    abajo->addWidget(cancelar);
    auto* columna = new QVBoxLayout(this);
    columna->setContentsMargins(16, 14, 16, 14);
    columna->setSpacing(10);
    columna->addWidget(qt::scroll_area(dentro, this), 1);
    columna->addLayout(abajo);
    codigo_->setText(QString::number(proponer_codigo_empresa(*db_)));
    anio_->setText(QString::number(anio(hoy)));
    proponer_periodo();
    elegir_origen();
    nombre_->setFocus();
    qt::resize_within_screen(*this, {900, 460});
}

NuevaEmpresa::~NuevaEmpresa() = default;

QWidget* NuevaEmpresa::construir_plan() {
    auto* zona = new QGroupBox("Plan de cuentas", this);
    auto* columna = new QVBoxLayout(zona);
    auto* rotulo = new QLabel("&Plan", zona);
    origen_ = new QComboBox(zona);
    rotulo->setBuddy(origen_);
    origen_->setAccessibleName("Plan de cuentas");
    enter_sigue(*origen_);
    const std::int64_t cuentas = contar_cuentas(*db_);
    if (cuentas > 0)
        origen_->addItem(to_qt("El de esta base (" + contadas(static_cast<std::size_t>(cuentas)) + ")"),
                         int(de_la_base));
    origen_->addItem("Plan general de muestra", int(plantilla));
    origen_->addItem(QString::fromUtf8("Importar de un archivo CSV…"), int(archivo));
    resumen_ = new QLabel(zona);
    resumen_->setTextFormat(Qt::PlainText);
    resumen_->setWordWrap(true);
    errores_ = new QListWidget(zona);
    errores_->setAccessibleName("Errores del plan de cuentas");
    errores_->setWordWrap(true);
    auto* ayuda = new QLabel(
        QString::fromUtf8("Columnas del archivo: cuenta; nombre; tipo (activo, pasivo, patrimonio, ingreso o "
                          "gasto); y si se quiere auxiliar (1 o 0) y uso (la cuenta de la configuración a la "
                          "que sirve, por ejemplo iva o factura_cobrar). Todas las empresas de una base "
                          "comparten su plan."),
        zona);
    ayuda->setWordWrap(true);
    ayuda->setForegroundRole(QPalette::PlaceholderText);
    auto* eleccion = new QHBoxLayout;
    eleccion->addWidget(rotulo);
    eleccion->addWidget(origen_, 1);
    columna->addLayout(eleccion);
    columna->addWidget(resumen_);
    columna->addWidget(errores_, 1);
    columna->addSpacing(8);
    columna->addWidget(ayuda);
    columna->addStretch();
    connect(origen_, &QComboBox::activated, this, [this] { elegir_origen(); });
    return zona;
}

void NuevaEmpresa::elegir_origen() {
    switch (static_cast<Origen>(origen_->currentData().toInt())) {
    case de_la_base:
        plan_.reset();
        resumen_->setText(QString::fromUtf8("Se usan las cuentas y la configuración que ya están."));
        break;
    case plantilla:
        plan_ = leer_plan(dbtools::leer_dato(PLANTILLA));
        resumen_->setText(
            to_qt(contadas(plan_->cuentas.size()) + ", con las de la configuración ya elegidas."));
        break;
    case archivo: {
        const QString elegido =
            qt::choose_file(this, {"Plan de cuentas", {"CSV (*.csv *.txt)", "Todos los archivos (*)"}});
        if (elegido.isEmpty()) {
            origen_->setCurrentIndex(0);
            return elegir_origen();
        }
        return leer_archivo(elegido);
    }
    }
    mostrar_errores({});
}

void NuevaEmpresa::mostrar_errores(const QStringList& errores) {
    errores_->clear();
    for (const QString& texto : errores) errores_->addItem(QString::fromUtf8("✖ ") + texto);
    errores_->setVisible(!errores.isEmpty());
}

void NuevaEmpresa::leer_archivo(const QString& nombre) {
    origen_->setCurrentIndex(origen_->findData(int(archivo)));
    QFile f(nombre);
    plan_ = Plan{};
    if (engine_file(to_std(nombre))) {
        plan_->errores.push_back({1, "archivo", engine_file_text(to_std(nombre))});
    } else if (!f.open(QIODevice::ReadOnly) || f.size() > MAYOR_ARCHIVO) {
        plan_->errores.push_back({1, "archivo", "no se puede leer " + to_std(nombre)});
    } else {
        plan_ = leer_plan(f.readAll().toStdString());
        if (plan_->errores.empty()) plan_->errores = comparar_plan(*db_, *plan_);
    }
    QStringList errores;
    for (const ErrorPlan& e : plan_->errores) errores << to_qt(e.texto());
    mostrar_errores(errores);
    const std::string corto = to_std(QFileInfo(nombre).fileName());
    const auto errados = static_cast<std::int64_t>(plan_->errores.size());
    resumen_->setText(to_qt(
        errados == 0 ? "✔ " + corto + ": " + contadas(plan_->cuentas.size()) + " sin errores."
                     : "✖ " + corto + ": " + cuantos(errados, "error", "errores") + ". No se importa nada."));
}

void NuevaEmpresa::proponer_periodo() {
    const int a = anio_->text().toInt();
    desde_->setText(QString("01/01/%1").arg(a));
    hasta_->setText(QString("31/12/%1").arg(a));
}

int NuevaEmpresa::codigo() const { return codigo_->text().trimmed().toInt(); }

EmpresaNueva NuevaEmpresa::leer() const {
    EmpresaNueva e;
    const auto texto = [](const QLineEdit* caja) { return to_std(caja->text().trimmed()); };
    e.codigo = codigo();
    e.nombre = texto(nombre_);
    e.rut = texto(rut_);
    e.direccion = texto(direccion_);
    e.giro = texto(giro_);
    e.anio = anio_->text().trimmed().toInt();
    e.desde = leer_fecha(texto(desde_));
    e.hasta = leer_fecha(texto(hasta_));
    e.usuario = texto(usuario_);
    e.plan = plan_;
    return e;
}

bool NuevaEmpresa::revisar() {
    const bool grave = forma_->observar(revisar_empresa(*db_, leer()));
    mostrar_errores(forma_->sin_campo());
    estado_->setText(grave ? QString::fromUtf8("✖ Hay datos que corregir; no se ha creado nada.")
                           : QString());
    return !grave;
}

bool NuevaEmpresa::crear() {
    const EmpresaNueva e = leer();
    try {
        if (!revisar()) return false;
        crear_empresa(*db_, e, dbtools::leer_tabla("plan/codigos.csv"));
    } catch (const std::exception& error) {
        estado_->setText(QString::fromUtf8("✖ No se ha creado nada: ") + to_qt(error.what()));
        return false;
    }
    try {
        if (db_->has_table("ctmhistoria")) proteger(*db_, e.codigo, 1, true, true);
    } catch (const std::exception& error) {
        avisar_problema(this, QString::fromUtf8("La empresa se creó sin historia: ") + to_qt(error.what()));
    }
    return true;
}

} // namespace quorvel::app
