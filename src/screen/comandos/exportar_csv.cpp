#include "interchange/archivo_comprobante.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"

namespace quorvel {

void exportar_csv(frmQuorvel& f) {
    if (f.glbBanderaNuevo) return f.critico("Debe grabar el comprobante antes de exportarlo");
    const auto archivo = f.escritorio().ask_file(
        {"Exportar comprobante a archivo formato CSV", "*.csv", f.txtNum_doc.Text() + ".csv", true});
    if (!archivo) return;
    const Comprobante c = leer_pantalla(f);
    escribir_archivo(*archivo, bytes_de_comprobante(c, f.ctlRegistro1.Company(), f.cmbMoneda.Text()));
    f.informacion("Comprobante exportado al archivo " + *archivo);
}

} // namespace quorvel
