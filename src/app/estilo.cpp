#include "app/estilo.h"

#include "app/dibujo.h"
#include "qt/icons.h"

#include <QApplication>
#include <QFont>

namespace quorvel::app {

namespace {

struct Colores {
    QRgb ventana, base, alterna, texto, boton, borde, medio, claro, acento, sobre_acento, apagado;
};
constexpr Colores CLARO{0xffeceff2, 0xffffffff, 0xfff4f6f8, 0xff1d2127, 0xffe6e9ed, 0xff828a93,
                        0xffb9c0c8, 0xffd3d8de, 0xff1f5f8b, 0xffffffff, 0xff5a6068};
constexpr Colores OSCURO{0xff24272b, 0xff17191b, 0xff1d2023, 0xffe4e6e9, 0xff3a3f45, 0xff787f87,
                         0xff565c64, 0xff3f444b, 0xff6ab0e0, 0xff10141a, 0xffa6adb5};

QPalette paleta_de(const Colores& c) {
    QPalette p;
    p.setColor(QPalette::Window, c.ventana);
    p.setColor(QPalette::Base, c.base);
    p.setColor(QPalette::AlternateBase, c.alterna);
    for (const auto papel :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        p.setColor(papel, c.texto);
    p.setColor(QPalette::Button, c.boton);
    p.setColor(QPalette::ToolTipBase, c.base);
    p.setColor(QPalette::Mid, c.medio);
    p.setColor(QPalette::Midlight, c.claro);
    p.setColor(QPalette::Light, QColor(c.boton).lighter(110));
    p.setColor(QPalette::Dark, c.borde);
    p.setColor(QPalette::Highlight, c.acento);
    p.setColor(QPalette::HighlightedText, c.sobre_acento);
    p.setColor(QPalette::Link, c.acento);
    p.setColor(QPalette::PlaceholderText, c.apagado);
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, papel, c.apagado);
    p.setColor(QPalette::Disabled, QPalette::Base, c.ventana);
    return p;
}

} // namespace

QPalette paleta(bool oscuro) { return paleta_de(oscuro ? OSCURO : CLARO); }

void aplicar_estilo(QApplication& aplicacion, Tema tema) {
    const bool oscuro_del_sistema = aplicacion.palette().color(QPalette::Window).lightness() < 128;
    const bool oscuro = tema == Tema::oscuro || (tema == Tema::sistema && oscuro_del_sistema);
    QApplication::setStyle(new Dibujo);
    QApplication::setWindowIcon(qt::program_icon());
    QPalette colores = paleta(oscuro);
    QApplication::setPalette(colores);
    // A list is a field to fill in, not a button.
    colores.setColor(QPalette::Button, colores.color(QPalette::Base));
    colores.setColor(QPalette::Disabled, QPalette::Button, colores.color(QPalette::Disabled, QPalette::Base));
    QApplication::setPalette(colores, "QComboBox");
    QFont letra("DejaVu Sans");
    letra.setPointSizeF(9);
    QApplication::setFont(letra);
}

} // namespace quorvel::app
