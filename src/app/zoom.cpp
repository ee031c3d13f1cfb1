#include "app/zoom.h"

#include "platform/files/settings_file.h"

#include <QApplication>
#include <QFont>
#include <QKeyEvent>
#include <algorithm>
#include <optional>

namespace quorvel::app {

namespace {

constexpr const char *SECCION = "NIVO", *CLAVE = "zoom";

/// What a key makes of the size; nothing for a key that is not for it.
std::optional<int> pedido(const QKeyEvent& tecla, int ahora) {
    const auto con = tecla.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier); // "+" may need Shift
    if (con != Qt::ControlModifier) return std::nullopt;
    switch (tecla.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: return ahora + Zoom::PASO;
    case Qt::Key_Minus: return ahora - Zoom::PASO;
    case Qt::Key_0: return Zoom::USUAL;
    default: return std::nullopt;
    }
}

} // namespace

Zoom::Zoom(std::filesystem::path carpeta, QObject* parent)
    : QObject(parent), carpeta_(std::move(carpeta)), letra_usual_(QApplication::font().pointSizeF()) {
    const std::string guardado = SettingsFile(carpeta_).get(SECCION, CLAVE);
    if (!guardado.empty()) aplicar(std::atoi(guardado.c_str()));
    qApp->installEventFilter(this);
}

void Zoom::aplicar(int porcentaje) {
    porcentaje_ = std::clamp(porcentaje, MENOR, MAYOR);
    QFont letra = QApplication::font();
    letra.setPointSizeF(letra_usual_ * porcentaje_ / 100);
    qApp->setProperty("zoom", porcentaje_); // columns are as wide as their letters ask for
    QApplication::setFont(letra);
}

void Zoom::cambiar(int porcentaje) {
    aplicar(porcentaje);
    // a folder that cannot be written costs the size at the next start, nothing else
    (void)SettingsFile(carpeta_).set(SECCION, CLAVE, std::to_string(porcentaje_));
}

bool Zoom::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
    const auto nuevo = pedido(*static_cast<QKeyEvent*>(event), porcentaje_);
    if (nuevo) cambiar(*nuevo);
    return nuevo.has_value();
}

} // namespace quorvel::app
