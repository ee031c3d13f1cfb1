#include "screen/traer_version.h"

#include "screen/adjuntos/adjuntos.h"
#include "screen/borrador.h"
#include "screen/campos.h"
#include "screen/comandos/procesado.h"
#include "screen/frmQuorvel.h"
#include "voucher/cargar.h"

namespace quorvel {
namespace {

/// In a set of their own: the old one may be another voucher's by now.
void traer_adjuntos(frmQuorvel& f, const Comprobante& c) {
    f.lstadjunto.Clear();
    if (c.adjuntos.empty()) return;
    const Attachments carpeta = carpeta_adjuntos(f);
    fijar_conjunto(f, carpeta.first_free(numero_adjunto(*f.glbdb, std::nullopt)));
    if (!carpeta.copy_set(std::to_string(c.comprobante_adjunto), f.gstrcomprobante_adjunto, c.adjuntos))
        return f.exclamacion("No se pudieron copiar los archivos adjuntos");
    std::string faltan;
    for (const std::string& nombre : c.adjuntos) {
        if (carpeta.find(f.gstrcomprobante_adjunto, nombre))
            f.lstadjunto.AddItem(nombre);
        else
            faltan += "\r\n" + nombre;
    }
    if (!faltan.empty()) f.exclamacion("Archivos adjuntos que ya no están:" + faltan);
}

} // namespace

void traer_version(frmQuorvel& f, const Comprobante& c) {
    const bool existe = ExisteComprobante(*f.glbdb, c.clave());
    {
        const Borrador::Cambio cambio(f);
        limpiar_para_nuevo(f);
        mostrar_comprobante(f, c);
        reemplazar_lineas(f, c.lineas, c.totales);
        RenovarComprobante(f);
        if (!existe) f.estado.cortado = c;
    }
    traer_adjuntos(f, c);
    f.borrador->obligar();
    if (existe)
        f.informacion(
            "El comprobante existe todavía: lo que muestra la pantalla es una copia de como era. Para "
            "grabarla cambie el número o la fecha, o elimine antes el otro");
    f.mskF_comp.SetFocus();
}

} // namespace quorvel
