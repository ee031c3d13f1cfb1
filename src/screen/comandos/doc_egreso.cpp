#include "assistants/documentos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"
#include "screen/recargar_documentos.h"

namespace quorvel {

void doc_egreso(frmQuorvel& f) {
    if (habilitar_documentos_caja(*f.glbdb) < 1) return f.informacion("Documento ya existen");
    const std::string documento = f.cmbDocumento.Text(), numero = f.txtNum_doc.Text();
    const std::int64_t propuesto = f.estado.numero_propuesto;
    recargar_documentos(f);
    if (!f.glbBanderaNuevo) { // a saved voucher keeps the key that it is shown with
        if (!f.cmbDocumento.select_text(documento)) {
            f.cmbDocumento.AddItem(documento);
            f.cmbDocumento.SetListIndex(f.cmbDocumento.ListCount() - 1);
        }
        f.txtNum_doc.SetText(numero);
        f.estado.numero_propuesto = propuesto;
    }
    f.informacion("Documento agregados");
}

} // namespace quorvel
