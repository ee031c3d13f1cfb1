#include "screen/persona.h"

#include "screen/consultas/consultas.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"
#include "text/rut.h"
#include "voucher/cargar.h"

namespace quorvel {

bool frmQuorvel::validarut() {
    const ResultadoRut r = quorvel::validarut(txtrut_persona.Text());
    if (r.valido) {
        txtrut_persona.SetText(r.texto);
        return true;
    }
    critico(r.mensaje);
    txtrut_persona.SetFocus();
    return false;
}

void rut_dejado(frmQuorvel& f) {
    if (f.txtrut_persona.Text().empty()) return;
    const ResultadoRut r = validarut(con_guion(f.txtrut_persona.Text()));
    if (!r.valido) return;
    f.txtrut_persona.SetText(r.texto);
    if (recortar(f.txtnombre.Text()).empty()) f.txtnombre.SetText(nombre_de_rut(*f.glbdb, r.texto));
}

void buscar_persona(frmQuorvel& f) {
    const auto elegida = elegir_persona(f.escritorio(), *f.glbdb);
    if (!elegida) return;
    f.txtrut_persona.SetText(elegida->codigo);
    f.txtnombre.SetText(elegida->nombre);
}

void tecla_persona(frmQuorvel& f, ui::KeyEvent& e) {
    if (ui::key_ascii(e) != 25) return; // Ctrl+Y
    e.handled = true;
    if (f.txtrut_persona.Locked()) return;
    f.atender([&] { buscar_persona(f); });
}

} // namespace quorvel
