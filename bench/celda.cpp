// A committed amount in a long voucher, from the first key to the new totals: no work may grow with the
// lines.
#include "apoyo/comprobante.h"
#include "apoyo/sesiones.h"
#include "escritorio_mudo.h"
#include "largo.h"
#include "screen/frmQuorvel.h"
#include "tabla.h"

using namespace quorvel;
using namespace quorvel::bench;

namespace {

/// The screen with a saved voucher of so many lines on it.
class Pantalla {
public:
    explicit Pantalla(int lineas) : lineas_(lineas), db_(abrir_sesion(base_con_comprobante(lineas))) {
        preparar(f_, *db_, *reporte_);
        f_.Show();
        f_.ctlRegistro1.press(ui::ctlRegistro::Function::Search);
        if (f_.grdDetalle.Rows() != lineas) std::fprintf(stderr, "voucher not loaded\n"), std::exit(1);
    }
    ~Pantalla() { f_.Unload(); }
    void editar(int i) {
        constexpr int DEBE = 3;
        const int paso = 37 * i % (lineas_ / 2 - 1);
        ui::ctlPlanilla& g = f_.grdDetalle;
        const std::string monto = std::to_string(2000 + i);
        bool bien = g.SetFocus() && g.move_to(2 * paso, DEBE) && g.begin_edit(false);
        for (const char c : monto) bien = bien && g.type(static_cast<char32_t>(c));
        if (!bien || !g.commit_edit()) std::fprintf(stderr, "cell refused\n"), std::exit(1);
    }
    [[nodiscard]] std::string total() const { return f_.lblTotalDebe.Caption(); }

private:
    int lineas_;
    std::string carpeta_ = apoyo::carpeta_nueva();
    std::unique_ptr<clsConexion> db_, reporte_ = abrir_sesion_informes(carpeta_ + "/print.db");
    EscritorioMudo escritorio_;
    SinImpresora impresor_;
    RelojFijo reloj_{apoyo::HOY};
    frmQuorvel f_{{escritorio_, reloj_, impresor_, carpeta_}};
};

} // namespace

int main() {
    Pantalla corto(100), medio(5000), largo(10000);
    const std::string antes = largo.total();
    for (const auto& [nombre, pantalla] : {std::pair{5000, &medio}, std::pair{10000, &largo}}) {
        const Par p = alternar(
            200, [&](int i) { corto.editar(i); }, [&, pantalla = pantalla](int i) { pantalla->editar(i); });
        fila(texto("cell committed, voucher of %d / 100 lines, without painting", nombre),
             texto("%.2f (%.0f us / %.0f us)", p.otro / p.uno, p.otro * 1e6, p.uno * 1e6), "~1, < 16 ms");
    }
    if (largo.total() == antes) std::fprintf(stderr, "the total did not follow\n");
    return largo.total() == antes ? 1 : 0;
}
