#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/comandos/procesado.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"
#include "text/meses.h"

namespace quorvel {

namespace {

std::optional<Fecha> siguiente(const std::optional<Fecha>& fecha) {
    return fecha ? std::optional(mes_siguiente(*fecha)) : std::nullopt;
}

/// What comes again every month; what belongs to the one document or payment does not.
Comprobante del_mes_siguiente(Comprobante c) {
    for (auto fecha : {&Comprobante::f_comp, &Comprobante::fecha_factura, &Comprobante::fecha_pago})
        c.*fecha = siguiente(c.*fecha);
    c.concepto = con_meses_siguientes(c.concepto);
    c.num_ref.clear();
    c.apertura = false;
    for (Linea& l : c.lineas) {
        l.glosa = primeros(con_meses_siguientes(l.glosa), LARGO_GLOSA);
        l.conciliado.clear();
        l.num_ref.clear();
    }
    return c;
}

} // namespace

void repetir_mes(frmQuorvel& f) {
    if (f.grdDetalle.Rows() == 0) return f.exclamacion("Abra primero el comprobante que quiere repetir (F3)");
    if (!f.grdDetalle.commit_edit()) return;
    const Comprobante c = del_mes_siguiente(leer_pantalla(f));
    limpiar_para_nuevo(f); // what is not saved waits as a draft
    mostrar_comprobante(f, c);
    reemplazar_lineas(f, c.lineas, c.totales);
    RenovarComprobante(f);
    proponer_numero_documento(f);
    f.txtconcepto.SetFocus();
}

} // namespace quorvel
