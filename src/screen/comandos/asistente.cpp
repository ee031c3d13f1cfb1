#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"

#include <array>

namespace quorvel {

void asistente(frmQuorvel& f) {
    const struct {
        bool falta;
        const char* mensaje;
        ui::Control& foco;
    } exigencias[] = {
        {recortar(f.cmbdoc_libro.Text()).empty(), "Ingrese documento", f.cmbdoc_libro},
        {f.txtrut_persona.Text().empty(), "Ingrese RUT", f.txtrut_persona},
        {f.txtnombre.Text().empty(), "Ingrese Nombre", f.txtnombre},
    };
    for (const auto& e : exigencias) {
        if (!e.falta) continue;
        f.critico(e.mensaje);
        e.foco.SetFocus();
        return;
    }
    constexpr std::array<void (*)(frmQuorvel&), 7> POR_LIBRO{
        nullptr,           asistente_venta,  asistente_compra,      asistente_retencion,
        asistente_ingreso, asistente_egreso, asistente_retiro_socio};
    const int libro = f.cmblibro.ListIndex();
    if (libro > 0 && libro < static_cast<int>(POR_LIBRO.size()))
        POR_LIBRO[static_cast<std::size_t>(libro)](f);
}

} // namespace quorvel
