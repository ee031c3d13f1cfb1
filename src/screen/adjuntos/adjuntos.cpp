#include "screen/adjuntos/adjuntos.h"

#include "screen/frmQuorvel.h"

namespace quorvel {

Attachments carpeta_adjuntos(const frmQuorvel& f) {
    return {attachment_base(f.servicios.carpeta), attachment_database(f.glbdb->Name())};
}

void fijar_conjunto(frmQuorvel& f, const std::string& conjunto) {
    f.gstrcomprobante_adjunto = conjunto;
    f.lblgstrcomprobante_adjunto.SetCaption(conjunto);
}

void nuevo_conjunto(frmQuorvel& f) { fijar_conjunto(f, carpeta_adjuntos(f).first_free(f.NumeroAdjunto())); }

void adjunto_agregar(frmQuorvel& f) {
    const auto elegido = f.escritorio().ask_file({"Adjuntar archivo", "*", "", false});
    if (!elegido) return;
    if (!bare_name(std::filesystem::path(*elegido).filename().string()))
        return f.critico("Nombre de archivo no válido");
    const Attachments carpeta = carpeta_adjuntos(f);
    // screens that prepare new vouchers at one time propose the same set: the first file decides whose it is
    if (f.glbBanderaNuevo && f.lstadjunto.ListCount() == 0)
        fijar_conjunto(f, carpeta.claim(f.gstrcomprobante_adjunto));
    if (carpeta.would_replace(f.gstrcomprobante_adjunto, *elegido) &&
        !f.pregunta("Ya existe un archivo adjunto con ese nombre y otro contenido, ¿desea reemplazarlo?"))
        return;
    if (const auto nombre = carpeta.add(f.gstrcomprobante_adjunto, *elegido)) f.lstadjunto.AddItem(*nombre);
}

void adjunto_eliminar(frmQuorvel& f) {
    const int i = f.lstadjunto.ListIndex();
    if (i < 0) return;
    const std::string nombre = f.lstadjunto.Text();
    if (!f.pregunta("Esta seguro que desea eliminar " + nombre)) return;
    (void)carpeta_adjuntos(f).remove(f.gstrcomprobante_adjunto, nombre); // the entry goes in any case
    f.lstadjunto.RemoveItem(i);
}

void adjunto_abrir(frmQuorvel& f) {
    if (f.lstadjunto.ListIndex() < 0) return;
    const auto archivo = carpeta_adjuntos(f).find(f.gstrcomprobante_adjunto, f.lstadjunto.Text());
    if (archivo) f.escritorio().open_with(archivo->string());
}

void adjunto_guardar_copia(frmQuorvel& f) {
    if (f.lstadjunto.ListIndex() < 0) return;
    const std::string nombre = f.lstadjunto.Text();
    const auto destino = f.escritorio().ask_file({"Guardar copia", "*", nombre, true});
    if (destino) (void)carpeta_adjuntos(f).save_copy(f.gstrcomprobante_adjunto, nombre, *destino);
}

} // namespace quorvel
