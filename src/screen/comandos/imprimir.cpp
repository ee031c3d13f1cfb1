#include "interchange/tablas_impresion.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"
#include "screen/papeles/frmImprimir.h"
#include "screen/papeles/preparar.h"

namespace quorvel {

void imprimir(frmQuorvel& f) {
    frmImprimir dialogo(f.escritorio());
    dialogo.ShowModal();
    if (!dialogo.glbAceptar || !preparar_impresion(f)) return;
    f.rptReporte.ReportFileName =
        archivo_informe(f.glbdbReport->Name(), f.ctlRegistro1.Printer(), "ctcQuorvel").string();
    f.rptReporte.ToPrinter = dialogo.glbImprimir;
    f.rptReporte.Start(f.servicios.impresor, "ctcQuorvel", *f.glbdbReport);
}

} // namespace quorvel
