// A committed amount in a long voucher, from the first key to the new totals: no work may grow with the
// lines.
#include "apoyo/comprobante.h"
#include "apoyo/sesiones.h"
#include "app/db/base.h"
#include "app/db/esquema.h"
#include "escritorio_mudo.h"
#include "screen/frmQuorvel.h"
#include "tabla.h"

using namespace quorvel;
using namespace quorvel::bench;

namespace {

struct SinImpresora final : ReportPrinter {
    void run(const ReportJob&) override {}
};

/// The screen with a saved voucher of so many lines on it.
class Pantalla {
public:
    explicit Pantalla(int lineas) : lineas_(lineas), carpeta_(apoyo::carpeta_nueva()) {
        const std::string conexion = "sqlite:" + carpeta_ + "/celda.db";
        crear_esquema(conexion);
        sembrar_empresa(*abrir_sesion(conexion));
        const std::string n = std::to_string(lineas / 2);
        abrir_base(conexion, Abrir::existente)
            ->ejecutar(
                "insert into ctcquorvel(empresa,f_comp,documento,num_docum,moneda,t_debe,t_haber,libro) "
                "values "
                "(1,'2024-03-20','001','1','PS'," +
                n + "000," + n +
                "000,'CONTABLES');"
                "with recursive s(n) as (select 1 union all select n+1 from s where n<2*" +
                n +
                ") insert into "
                "ctdquorvel(empresa,f_comp,documento,num_docum,secuencia,centro,debe_nacional,haber_nacional,"
                "glosa) select 1,'2024-03-20','001','1',n,'101001',(n%2)*1000,(1-n%2)*1000,'linea' from s");
        db_ = abrir_sesion(conexion);
        reporte_ = abrir_sesion_informes(carpeta_ + "/print.db");
        f_.glbUsuario = f_.glbEmpresa = 1;
        f_.glbN_usuario = "ANA ROJAS", f_.glbN_empresa = "Empresa", f_.glbPermiso = "11111";
        f_.glbPrograma = "Contabilidad";
        f_.glbdb = db_.get(), f_.glbdbReport = reporte_.get();
        f_.SetglbTipoImpresora("L");
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
    std::string carpeta_;
    std::unique_ptr<clsConexion> db_, reporte_;
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
