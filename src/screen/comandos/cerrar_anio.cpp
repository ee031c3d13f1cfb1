#include "yearend/cerrar_anio.h"

#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/comandos/con_avance.h"
#include "screen/frmQuorvel.h"
#include "screen/papeles/ocupado.h"

namespace quorvel {

namespace {

void mostrar(frmQuorvel& f, const ResultadoCerrarAnio& r) {
    if (!r.desenlace) return avisar(f, r.desenlace.rechazo);
    f.config = r.nueva;
    f.informacion(r.mensaje);
    limpiar_para_nuevo(f);
}

/// The check can be cancelled; what follows it is short and never is.
ResultadoCerrarAnio cerrar(frmQuorvel& f, Fecha hoy) {
    const Ocupado ocupado(f.escritorio());
    return cerrar_anio_contable(
        *f.glbdb, f.glbEmpresa, hoy,
        [&] { return f.escritorio().progress("Revisando las cuentas de resultado", 0, 0); }, f.glbUsuario);
}

} // namespace

void cerrar_anio(frmQuorvel& f) {
    const Fecha hoy = f.servicios.reloj.hoy();
    if (!leer_configuracion(*f.glbdb, f.glbEmpresa, hoy).f_comp_cierre) {
        // asked and answered before the connection was lost
        const auto completado = completar_cierre_anio(*f.glbdb, f.glbEmpresa, hoy);
        return completado ? mostrar(f, *completado) : f.critico(FALTA_CIERRE);
    }
    if (f.pregunta("Esta seguro que desea cerrar el año contable\r\n"
                   "Nota: Una vez cerrado el año no se modificar ningun comprobante del año"))
        mostrar(f, cerrar(f, hoy));
}

} // namespace quorvel
