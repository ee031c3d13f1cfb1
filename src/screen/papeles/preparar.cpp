#include "screen/papeles/preparar.h"

#include "interchange/imprimir_comprobante.h"
#include "interchange/tablas_impresion.h"
#include "screen/campos.h"
#include "screen/frmQuorvel.h"
#include "screen/papeles/ocupado.h"
#include "screen/permisos.h"

#include <stdexcept>

namespace quorvel {

void asegurar_tablas(frmQuorvel& f) {
    if (f.glbdbReport && f.ctlRegistro1.Flag(PERMISO_IMPRIMIR) && !misma_base(*f.glbdb, *f.glbdbReport))
        crear_tablas_impresion(*f.glbdbReport);
}

bool preparar_impresion(frmQuorvel& f) {
    const auto clave = clave_pantalla(f);
    if (!clave) throw std::runtime_error("Fecha no válida");
    clsConexion& reporte = base_informes(f.glbdbReport);
    asegurar_tablas(f);
    const Ocupado ocupado(f.escritorio());
    ImpresionComprobante i;
    i.clave = *clave;
    i.empresa = f.ctlRegistro1.Company();
    i.usuario = f.ctlRegistro1.User();
    i.documento = f.cmbDocumento.Text();
    i.concepto = f.txtconcepto.Text();
    i.hora = f.servicios.reloj.hora();
    i.elaborado = f.config.elaborado;
    i.revisado = f.config.revisado;
    i.aprobado = f.config.aprobado;
    const long total = f.grdDetalle.Rows();
    return preparar_comprobante(
        *f.glbdb, reporte, i, f.maestros[Maestro::auxiliares],
        [&](long hechas, long) { return f.escritorio().progress("Preparando la impresión", hechas, total); });
}

} // namespace quorvel
