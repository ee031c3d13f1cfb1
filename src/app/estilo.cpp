#include "app/estilo.h"

#include "qt/icons.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

namespace quorvel {

namespace {

struct Colores {
    QRgb ventana, base, alterna, texto, boton, medio, acento, sobre_acento, apagado;
};
constexpr Colores CLARO{0xfff3f4f6, 0xffffffff, 0xfff7f8fa, 0xff1d2127, 0xffe9ebee,
                        0xffc3c8cf, 0xff1f5f8b, 0xffffffff, 0xff8a9099};
constexpr Colores OSCURO{0xff2f3338, 0xff1b1d20, 0xff212428, 0xffe4e6e9, 0xff3d4248,
                         0xff4a4f56, 0xff5aa3d6, 0xff10141a, 0xff7b828b};

QPalette paleta(const Colores& c) {
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
    p.setColor(QPalette::Midlight, c.medio);
    p.setColor(QPalette::Light, QColor(c.boton).lighter(110));
    p.setColor(QPalette::Dark, QColor(c.medio).darker(130));
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

void aplicar_estilo(QApplication& aplicacion, Tema tema) {
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setWindowIcon(qt::program_icon());
    const bool oscuro_del_sistema = aplicacion.palette().color(QPalette::Window).lightness() < 128;
    const bool oscuro = tema == Tema::oscuro || (tema == Tema::sistema && oscuro_del_sistema);
    QApplication::setPalette(paleta(oscuro ? OSCURO : CLARO));
    QFont letra("DejaVu Sans");
    letra.setPointSizeF(9);
    QApplication::setFont(letra);
}

} // namespace quorvel
