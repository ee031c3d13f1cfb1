#include "demo_run/Mecanografo.h"

#include <iostream>

namespace quorvel::demo_run {

bool Mecanografo::ir_a(const ui::Form& forma, const std::string& nombre) {
    for (int i = 0; i < 60; ++i) {
        if (forma.active_control() != nullptr && forma.active_control()->name() == nombre) return true;
        t.tecla(Qt::Key_Tab);
    }
    std::cerr << "no se llega a " << nombre << '\n';
    return false;
}

void Mecanografo::campo(const ui::Form& forma, const std::string& nombre, const std::string& texto) {
    if (ir_a(forma, nombre)) t.escribir(texto);
}

void Mecanografo::boton(const ui::Form& forma, const std::string& nombre) {
    if (ir_a(forma, nombre)) t.tecla(Qt::Key_Return);
}

void Mecanografo::celda(const ui::ctlPlanilla& grilla, int columna, const std::string& texto) {
    if (texto.empty()) return;
    for (int i = 0; i < grilla.Cols() && grilla.Col() != columna; ++i) t.tecla(Qt::Key_Tab);
    t.escribir(texto);
}

void Mecanografo::renglon(const ui::ctlPlanilla& grilla, int desde, const std::vector<std::string>& textos) {
    for (const std::string& texto : textos) celda(grilla, desde++, texto);
    t.tecla(Qt::Key_Return);
}

} // namespace quorvel::demo_run
