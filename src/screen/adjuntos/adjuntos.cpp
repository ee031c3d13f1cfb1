#include "screen/adjuntos/adjuntos.h"

#include "screen/frmQuorvel.h"
#include "screen/registro/documento_electronico.h"
#include "voucher/cargar.h"

#include <algorithm>

namespace quorvel {

namespace {

using Nombres = std::vector<std::string>;

bool nombra(const Nombres& nombres, const std::string& nombre) {
    return std::ranges::find(nombres, nombre) != nombres.end();
}

/// A folder is the voucher's own while its list names a file there; before its first file it is made, so that
/// no two vouchers ever put files into one, whatever number they were proposed. @return false: it cannot be
bool reclamar_carpeta(frmQuorvel& f, const Attachments& carpeta) {
    if (f.lstadjunto.ListCount() > 0) return true;
    const bool guardado = !f.glbBanderaNuevo &&
                          std::to_string(f.estado.cargado->comprobante_adjunto) == f.gstrcomprobante_adjunto;
    if (guardado && carpeta.make(f.gstrcomprobante_adjunto)) return true;
    const auto libre = carpeta.claim(numero_adjunto(*f.glbdb, std::nullopt));
    if (libre) fijar_conjunto(f, *libre);
    return libre.has_value();
}

/// Another entry names the file, or a row that somebody else has saved since.
bool lo_nombra_otro(frmQuorvel& f, int entrada, const std::string& nombre) {
    for (int i = 0; i < f.lstadjunto.ListCount(); ++i)
        if (i != entrada && f.lstadjunto.List(i) == nombre) return true;
    const bool propio = f.estado.cargado && nombra(f.estado.cargado->adjuntos, nombre);
    return !propio && nombra(leer_adjuntos(*f.glbdb, f.gstrcomprobante_adjunto), nombre);
}

/// Takes files out of a set that another one has as well, but those that a stored row names.
void quitar_de(frmQuorvel& f, std::int64_t de, std::int64_t quedan_en, const Nombres& nombres) {
    const Attachments carpeta = carpeta_adjuntos(f);
    const std::string conjunto = std::to_string(de);
    const Nombres guardados = leer_adjuntos(*f.glbdb, conjunto);
    for (const std::string& nombre : nombres)
        if (!nombra(guardados, nombre) && carpeta.find(std::to_string(quedan_en), nombre))
            (void)carpeta.remove(conjunto, nombre);
}

} // namespace

Attachments carpeta_adjuntos(const frmQuorvel& f) {
    return {attachment_base(f.servicios.carpeta), attachment_database(f.glbdb->Name())};
}

void fijar_conjunto(frmQuorvel& f, const std::string& conjunto) {
    f.gstrcomprobante_adjunto = conjunto;
    f.lblgstrcomprobante_adjunto.SetCaption(conjunto);
}

void nuevo_conjunto(frmQuorvel& f) { fijar_conjunto(f, carpeta_adjuntos(f).first_free(f.NumeroAdjunto())); }

void quitar_copias(frmQuorvel& f, const Comprobante& c, const ResultadoGrabar& r) {
    const std::int64_t antes = c.comprobante_adjunto;
    if (c.adjuntos.empty() || r.desenlace.como == Desenlace::desconocido) return;
    if (!r.desenlace && r.copiado != 0) quitar_de(f, r.copiado, antes, c.adjuntos);
    if (r.desenlace && r.comprobante_adjunto != antes) quitar_de(f, antes, r.comprobante_adjunto, c.adjuntos);
}

void adjunto_agregar(frmQuorvel& f) {
    const auto elegido = f.escritorio().ask_file({"Adjuntar archivo", "*", "", false});
    if (elegido && !atender_adjunto(f, *elegido)) adjuntar_archivo(f, *elegido);
}

void adjuntar_archivo(frmQuorvel& f, const std::string& archivo) {
    if (!bare_name(std::filesystem::path(archivo).filename().string()))
        return f.critico("Nombre de archivo no válido");
    const Attachments carpeta = carpeta_adjuntos(f);
    if (!reclamar_carpeta(f, carpeta)) return;
    if (carpeta.would_replace(f.gstrcomprobante_adjunto, archivo) &&
        !f.pregunta("Ya existe un archivo adjunto con ese nombre y otro contenido, ¿desea reemplazarlo?"))
        return;
    if (const auto nombre = carpeta.add(f.gstrcomprobante_adjunto, archivo)) f.lstadjunto.AddItem(*nombre);
}

void adjunto_eliminar(frmQuorvel& f) {
    const int i = f.lstadjunto.ListIndex();
    if (i < 0) return;
    const std::string nombre = f.lstadjunto.Text();
    if (!f.pregunta("Esta seguro que desea eliminar " + nombre)) return;
    if (!lo_nombra_otro(f, i, nombre)) (void)carpeta_adjuntos(f).remove(f.gstrcomprobante_adjunto, nombre);
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
