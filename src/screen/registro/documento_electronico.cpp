#include "screen/registro/documento_electronico.h"

#include "interchange/archivo_comprobante.h"
#include "registro/bandeja.h"
#include "registro/dte.h"
#include "screen/abrir.h"
#include "screen/adjuntos/adjuntos.h"
#include "screen/campos.h"
#include "screen/frmQuorvel.h"
#include "screen/registro/llenar.h"

#include <fstream>

namespace quorvel {

using namespace registro;

namespace {

namespace fs = std::filesystem;

/// A file's first bytes: enough to see what it is.
std::string cabeza(const std::string& archivo) {
    std::error_code error;
    if (!fs::is_regular_file(archivo, error)) return {};
    std::string bytes(4096, ' ');
    std::ifstream entrada(archivo, std::ios::binary);
    entrada.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(entrada.gcount()));
    return bytes;
}

std::string leer_documento(const std::string& archivo) {
    if (!es_xml(cabeza(archivo))) throw ErrorRegistro("El archivo no es una factura electrónica (XML)");
    std::error_code error;
    if (fs::file_size(archivo, error) > BYTES_DTE) throw ErrorRegistro(DTE_ENORME);
    return leer_archivo(archivo);
}

/// The documents of a file held against the books. @throws ErrorRegistro when one of them is not in order
std::vector<Fila> cotejar(Bandeja& b, const std::string& archivo, const std::string& bytes) {
    b.agregar(archivo, bytes);
    b.cotejar();
    for (const Fila& f : b.filas())
        if (!f.doc.problema.empty()) throw ErrorRegistro(f.doc.problema);
    return b.filas();
}

Bandeja bandeja_nueva(frmQuorvel& f) {
    return {*f.glbdb, f.glbEmpresa, f.glbUsuario, f.servicios.reloj.hoy()};
}

std::string nombre_de(const Fila& f) { return f.doc_libro + " " + f.doc.folio + " de " + f.doc.rut; }

std::string ya_esta(const Fila& f) {
    return nombre_de(f) + " ya está en el comprobante " + texto(*f.clave) +
           (f.detalle.empty() ? "" : ". " + f.detalle);
}

/// The saved voucher on the screen; nothing while a new one is there.
std::optional<Clave> guardado(const frmQuorvel& f) {
    if (f.glbBanderaNuevo || !f.estado.cargado) return std::nullopt;
    return f.estado.cargado->clave();
}

/// Where a file with the same contents is attached; empty when it is nowhere.
std::string donde_esta(const frmQuorvel& f, const std::string& bytes) {
    const Attachments carpeta = carpeta_adjuntos(f);
    for (const AttachedFile& a : carpeta.files()) {
        const auto lugar = carpeta.find(a.set, a.name);
        std::error_code error;
        if (!lugar || fs::file_size(*lugar, error) != bytes.size() || error) continue;
        if (a.set == f.gstrcomprobante_adjunto || leer_archivo(*lugar) != bytes) continue;
        const auto clave = comprobante_del_conjunto(*f.glbdb, a.set);
        return clave ? "al comprobante " + texto(*clave)
                     : "a un comprobante sin grabar (conjunto " + a.set + ")";
    }
    return {};
}

/// Says what the document and the saved voucher on the screen have to do with each other.
void comparar(frmQuorvel& f, const Fila& fila, const Clave& clave) {
    if (fila.clave && texto(*fila.clave) != texto(clave)) return f.exclamacion(ya_esta(fila));
    if (fila.estado == Estado::contabilizado)
        return f.informacion("El documento coincide con el comprobante");
    if (fila.clave) return f.exclamacion("El documento difiere del comprobante: " + fila.detalle);
    const Comprobante& c = *f.estado.cargado;
    f.exclamacion("El documento es " + nombre_de(fila) + " y el comprobante es de " + c.doc_libro + " " +
                  folio_limpio(c.num_ref) + " de " + rut_mostrado(c.rut_persona));
}

void llenar(frmQuorvel& f, const Bandeja& b, const Fila& fila, const std::string& archivo) {
    llenar_nuevo(f, b.comprobante(fila));
    adjuntar_archivo(f, archivo);
    if (const std::string falta = b.le_falta(fila); !falta.empty())
        f.informacion("Es el primer documento de " + fila.doc.nombre + ": falta " +
                      (falta == "cuenta" ? "la cuenta de la primera línea"
                                         : "su auxiliar (Genera Aux. del asistente)"));
}

} // namespace

void recibir_documento(frmQuorvel& f, const std::string& archivo) {
    const std::string bytes = leer_documento(archivo);
    Bandeja b = bandeja_nueva(f);
    const auto filas = cotejar(b, archivo, bytes);
    if (filas.size() != 1) return abrir_registro(f, archivo);
    const Fila& fila = filas.front();
    if (fila.estado == Estado::no_contabilizable) throw ErrorRegistro(fila.detalle);
    if (const auto clave = guardado(f)) return comparar(f, fila, *clave);
    if (fila.estado != Estado::nuevo) return f.exclamacion(ya_esta(fila));
    if (const std::string donde = donde_esta(f, bytes); !donde.empty())
        return f.exclamacion("El mismo archivo ya está adjunto " + donde);
    llenar(f, b, fila, archivo);
}

bool atender_adjunto(frmQuorvel& f, const std::string& archivo) {
    if (!es_documento_electronico(cabeza(archivo))) return false;
    const bool vacio = f.glbBanderaNuevo && f.grdDetalle.Rows() == 0 && f.txtnum_ref.Text().empty();
    if (vacio) return recibir_documento(f, archivo), true;
    Bandeja b = bandeja_nueva(f);
    const auto filas = cotejar(b, archivo, leer_documento(archivo));
    const auto clave = guardado(f);
    for (const Fila& fila : filas) {
        if (!fila.clave || (clave && texto(*fila.clave) == texto(*clave))) continue;
        f.exclamacion(ya_esta(fila));
        return true;
    }
    if (clave && filas.size() == 1) comparar(f, filas.front(), *clave);
    return false;
}

} // namespace quorvel
