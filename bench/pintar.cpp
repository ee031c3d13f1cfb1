// The window itself on the offscreen platform: from a key to the painted picture in vouchers of 100, 5,000
// and 10,000 lines, and from nothing to the first picture of the screen with a small and a large chart.
#include "apoyo/comprobante.h"
#include "apoyo/sesiones.h"
#include "app/teclado.h"
#include "demo/demo.h"
#include "escritorio_mudo.h"
#include "largo.h"
#include "qt/FormWindow.h"
#include "qt/GridView.h"
#include "qt/QtEscritorio.h"
#include "tabla.h"

#include <QApplication>
#include <QTimer>

using namespace quorvel;
using namespace quorvel::bench;

namespace {

/// Counts what is painted.
class Pinturas : public QObject {
public:
    int veces = 0;
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::Paint) ++veces;
        return false;
    }
};

class Ventana {
public:
    explicit Ventana(const std::string& conexion) : db_(abrir_sesion(conexion)) {
        preparar(f_, *db_, *reporte_);
        f_.Show();
        QApplication::processEvents();
    }
    ~Ventana() { f_.Unload(); }
    void buscar() {
        QTimer::singleShot(0, [] {
            auto* lista = dynamic_cast<qt::FormWindow*>(QApplication::activeModalWidget());
            if (lista == nullptr) std::fprintf(stderr, "no search list\n"), std::exit(1);
            dynamic_cast<ui::ctlConsulta&>(*lista->form().find("ctlConsulta1")).pick(0);
        });
        f_.ctlRegistro1.press(ui::ctlRegistro::Function::Search);
        grilla().viewport()->installEventFilter(&pinturas);
        QApplication::processEvents();
    }
    /// Types an amount; the key that commits it is measured until its picture stands. @return seconds
    double editar(int i) {
        constexpr int DEBE = 3;
        escritorio_.window_of(f_)->activateWindow();
        const int filas = f_.grdDetalle.Rows();
        if (!f_.grdDetalle.SetFocus() || !f_.grdDetalle.move_to(2 * (37 * i % (filas / 2 - 1)), DEBE))
            std::exit(1);
        QApplication::processEvents();
        teclado_.escribir(std::to_string(2000 + i));
        QApplication::processEvents();
        const int antes = pinturas.veces;
        const std::string total = f_.lblTotalDebe.Caption();
        const double t = segundos([&] {
            teclado_.tecla(Qt::Key_Return);
            QApplication::processEvents();
        });
        if (pinturas.veces == antes || f_.lblTotalDebe.Caption() == total)
            std::fprintf(stderr, "nothing painted\n"), std::exit(1);
        return t;
    }
    [[nodiscard]] int lineas() const { return f_.grdDetalle.Rows(); }
    void guardar_imagen(const char* ruta) { escritorio_.window_of(f_)->grab().save(ruta); }

private:
    qt::GridView& grilla() { return *escritorio_.window_of(f_)->findChild<qt::GridView*>("grdDetalle"); }
    Pinturas pinturas;
    app::Teclado teclado_;
    std::string carpeta_ = apoyo::carpeta_nueva();
    std::unique_ptr<clsConexion> db_, reporte_ = abrir_sesion_informes(carpeta_ + "/print.db");
    qt::QtEscritorio escritorio_;
    SinImpresora impresor_;
    RelojFijo reloj_{apoyo::HOY};
    frmQuorvel f_{{escritorio_, reloj_, impresor_, carpeta_}};
};

double celdas(int lineas) {
    Ventana v(base_con_comprobante(lineas));
    v.buscar();
    if (v.lineas() != lineas) std::fprintf(stderr, "voucher not loaded\n"), std::exit(1);
    std::vector<double> t;
    for (int i = 0; i < 60; ++i) t.push_back(v.editar(i));
    if (const char* ruta = std::getenv("QUORVEL_FOTO")) v.guardar_imagen(ruta);
    return mediana(t);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication aplicacion(argc, argv);
    const double corto = celdas(100);
    for (const int lineas : {5000, 10000}) {
        const double largo = celdas(lineas);
        fila(texto("cell committed and painted, voucher of %d / 100 lines", lineas),
             texto("%.2f (%.1f ms / %.1f ms)", largo / corto, largo * 1e3, corto * 1e3), "~1, < 16 ms");
    }
    const std::string chica = apoyo::conexion_nueva(apoyo::Motor::sqlite),
                      grande = apoyo::conexion_nueva(apoyo::Motor::sqlite);
    for (const std::string& c : {chica, grande}) demo::crear_demo(c, apoyo::HOY);
    agrandar_maestros(grande, 50000, 500000);
    const Par p = alternar(
        11, [&](int) { Ventana v(chica); }, [&](int) { Ventana v(grande); });
    fila("window ready, 500000 auxiliaries / demonstration",
         texto("%.2f (%.0f ms / %.0f ms)", p.otro / p.uno, p.otro * 1e3, p.uno * 1e3), "<= 1.2");
}
