// Lookups from inside a cell.
#include "screen/consultas/consultas.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "screen/maestro.h"

namespace quorvel {

namespace {

void cuenta(frmQuorvel& f) {
    const auto elegida = elegir_cuenta_contable(f.escritorio(), *f.glbdb);
    if (!elegida) return;
    ui::ctlPlanilla& g = f.grdDetalle;
    g.cancel_edit();
    if (g.Value(SEC).empty()) g.SetValue(SEC, std::to_string(g.Rows() + 1));
    const std::string anterior = g.Value(CUENTA);
    g.SetValue(CUENTA, elegida->codigo);
    if (!buscar_codigo(f.maestros[Maestro::cuentas], "centro", elegida->codigo)) {
        f.estado.ultima_cuenta = elegida->codigo;
        return f.critico("Cuenta no válida");
    }
    if (elegida->codigo != anterior)
        cuenta_elegida(f, elegida->codigo, campo(f.maestros[Maestro::cuentas], "n_centro"));
    CuadrarLinea(f);
    g.SetFocus();
    g.SetCol(requiere_auxiliar(f, elegida->codigo) == "1" ? AUXILIAR : DEBE);
}

void auxiliar(frmQuorvel& f) {
    if (requiere_auxiliar(f, f.grdDetalle.Value(CUENTA)) != "1") return;
    const auto elegido = elegir_auxiliar(f.escritorio(), *f.glbdb);
    if (!elegido || !buscar_codigo(f.maestros[Maestro::auxiliares], "auxiliar", elegido->codigo)) return;
    f.grdDetalle.cancel_edit();
    f.grdDetalle.SetValue(AUXILIAR, elegido->codigo);
    f.lblAuxiliar.SetCaption(campo(f.maestros[Maestro::auxiliares], "n_auxiliar"));
    f.grdDetalle.SetFocus();
}

void centro(frmQuorvel& f) {
    const auto elegido = elegir_centro_costo(f.escritorio(), *f.glbdb);
    if (!elegido) return;
    f.grdDetalle.cancel_edit();
    f.grdDetalle.SetValue(CENTRO, elegido->codigo);
    if (!buscar_codigo(f.maestros[Maestro::centros], "centro", elegido->codigo))
        return f.critico("Centro de costo no válida");
    f.lblCentro.SetCaption(campo(f.maestros[Maestro::centros], "n_centro"));
    f.grdDetalle.SetFocus();
}

void otro_impuesto(frmQuorvel& f) {
    const auto elegido = elegir_impuesto(f.escritorio(), *f.glbdb);
    if (!elegido) return;
    f.grdDetalle.cancel_edit();
    f.grdDetalle.SetValue(OTRO_IMP, elegido->codigo);
    if (!ValidarOtroImpuesto(f, elegido->codigo)) return f.critico("Otro impuesto no válida");
    f.grdDetalle.SetValue(TASA, tasa_otro_impuesto(f));
    f.grdDetalle.SetFocus();
}

} // namespace

void boton_detalle(frmQuorvel& f, int columna) {
    if (f.grdDetalle.Locked()) return;
    f.estado.maestros_cambiados = false;
    switch (columna) {
    case CUENTA: cuenta(f); break;
    case AUXILIAR: auxiliar(f); break;
    case CENTRO: centro(f); break;
    case OTRO_IMP: otro_impuesto(f); break;
    default: break;
    }
    f.estado.maestros_cambiados = true; // entries may have been created meanwhile
}

} // namespace quorvel
