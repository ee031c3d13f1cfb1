#include "yearend/cerrar_anio.h"

#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"

namespace quorvel {

void cerrar_anio(frmQuorvel& f) {
    const Fecha hoy = f.servicios.reloj.hoy();
    if (!leer_configuracion(*f.glbdb, f.glbEmpresa, hoy).f_comp_cierre) return f.critico(FALTA_CIERRE);
    if (!f.pregunta("Esta seguro que desea cerrar el año contable\r\n"
                    "Nota: Una vez cerrado el año no se modificar ningun comprobante del año"))
        return;
    const ResultadoCerrarAnio r = cerrar_anio_contable(*f.glbdb, f.glbEmpresa, hoy);
    if (r.rechazo) return f.critico(r.rechazo->mensaje);
    f.config = r.nueva;
    f.informacion(r.mensaje);
    limpiar_para_nuevo(f);
}

} // namespace quorvel
