// Tens of thousands of generated lines in the grid's window: adding, first paint, scrolling, one more cell.
// Times per line or per page of a long voucher against those of one ten times shorter.
#include "platform/ui/form.h"
#include "qt/GridView.h"
#include "qt/QtEscritorio.h"
#include "tabla.h"

#include <QApplication>
#include <QScrollBar>

using namespace quorvel;
using namespace quorvel::bench;

namespace {

struct Forma : ui::Form {
    explicit Forma(ui::Escritorio& e) : Form(e, "forma", "") { grilla.SetCols(11); }
    ui::ctlPlanilla grilla{*this, "grilla"};
};

/// A voucher of so many lines in a window; every step in seconds.
struct Ventana {
    explicit Ventana(int lineas) : forma(escritorio) {
        vista.resize(1200, 600);
        vista.attach(forma.grilla);
        vista.show();
        QApplication::processEvents();
        for (int i = 0; i < lineas; ++i)
            filas.push_back(std::to_string(i + 1) + "\t103001\t" + std::to_string(100000 + i) +
                            "\t1.234.567\t0\tASIENTO APERTURA 2025\t\t\t" + std::to_string(i) + "\t\t");
    }
    double agregar() {
        forma.grilla.Clear();
        return segundos([&] { forma.grilla.AddItems(filas); });
    }
    double agregar_de_a_una() {
        forma.grilla.Clear();
        return segundos([&] {
            for (const std::string& fila : filas) forma.grilla.AddItem(fila);
        });
    }
    double pintar() {
        return segundos([&] { (void)vista.grab(); });
    }
    double recorrer() {
        QScrollBar& barra = *vista.verticalScrollBar();
        const int paso = std::max(1, barra.maximum() / 50);
        return segundos([&] {
                   for (int i = 0; i < 50; ++i) {
                       barra.setValue(i * paso);
                       QApplication::processEvents();
                   }
               }) /
               50;
    }
    double celda() {
        const int fila = static_cast<int>(filas.size()) / 2;
        forma.grilla.move_to(fila, 3);
        return segundos([&] {
                   for (int i = 0; i < 50; ++i) {
                       forma.grilla.SetTextMatrix(fila, 3, std::to_string(i));
                       QApplication::processEvents();
                   }
               }) /
               50;
    }
    qt::QtEscritorio escritorio;
    Forma forma;
    qt::GridView vista;
    std::vector<std::string> filas;
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    Ventana corta(5000), larga(50000);
    const auto por_unidad = [&](const char* que, double (Ventana::*medir)(), double veces) {
        std::vector<double> c, l;
        for (int i = 0; i < 5; ++i) c.push_back((corta.*medir)()), l.push_back((larga.*medir)());
        const double uno = mediana(c), otro = mediana(l);
        fila(texto("grid: %s, 50000 / 5000 lines", que),
             texto("%.2f (%.2f ms / %.2f ms)", otro / uno / veces, otro * 1e3, uno * 1e3), "~1");
    };
    por_unidad("lines added together, per line", &Ventana::agregar, 10);
    por_unidad("lines added one by one, per line", &Ventana::agregar_de_a_una, 10);
    por_unidad("first paint", &Ventana::pintar, 1);
    por_unidad("page scrolled and painted", &Ventana::recorrer, 1);
    por_unidad("cell changed and painted", &Ventana::celda, 1);
}
