// Name labels of the current line.
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "screen/maestro.h"
#include "text/numeros.h"

namespace quorvel {

namespace {

/// Empty for an empty code; unchanged when the code is unknown.
void nombrar(ui::Label& etiqueta, Recordset& rs, const char* columna, const char* nombre,
             const std::string& codigo) {
    if (codigo.empty()) return etiqueta.SetCaption("");
    if (buscar_codigo(rs, columna, codigo)) etiqueta.SetCaption(campo(rs, nombre));
}

} // namespace

void celda_movida(frmQuorvel& f) {
    const ui::ctlPlanilla& g = f.grdDetalle;
    if (!f.maestros.abierto(Maestro::cuentas)) return; // rows pushed before the first activation
    if (g.Col() == DEBE || g.Col() == HABER)
        f.txtnumero.SetText(formato(valnumeroformato(g.Value(g.Col())), "#,##0"));
    const std::string cuenta = g.Value(CUENTA);
    if (cuenta != f.estado.ultima_cuenta) {
        nombrar(f.lblCuenta, f.maestros[Maestro::cuentas], "centro", "n_centro", cuenta);
        f.estado.ultima_cuenta = cuenta;
    }
    // Two neighbouring lines may share an account and differ in the party.
    nombrar(f.lblAuxiliar, f.maestros[Maestro::auxiliares], "auxiliar", "n_auxiliar", g.Value(AUXILIAR));
    nombrar(f.lblCentro, f.maestros[Maestro::centros], "centro", "n_centro", g.Value(CENTRO));
    nombrar(f.lblOtro_impuesto, f.maestros[Maestro::otros_impuestos], "otro_impuesto", "descripcion",
            g.Value(OTRO_IMP));
}

} // namespace quorvel
