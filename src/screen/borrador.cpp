#include "screen/borrador.h"

#include "interchange/archivo_comprobante.h"
#include "screen/campos.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"

namespace quorvel {

namespace {

std::filesystem::path archivo(const frmQuorvel& f) {
    return f.servicios.carpeta /
           ("borrador_" + std::to_string(f.glbEmpresa) + "_" + std::to_string(f.glbUsuario) + ".csv");
}

/// The file's separator and line ends cannot stand inside a field.
void hacer_legible(std::string& texto) { texto = reemplazar(sin_controles(texto), ";", ","); }

} // namespace

void guardar_borrador(frmQuorvel& f) {
    if (!f.glbBanderaNuevo || f.grdDetalle.Rows() == 0) return;
    Comprobante c = leer_pantalla(f);
    for (std::string* texto : {&c.concepto, &c.nombre, &c.num_ref, &c.rut_persona, &c.num_docum})
        hacer_legible(*texto);
    for (Linea& linea : c.lineas) hacer_legible(linea.glosa);
    try {
        escribir_archivo(archivo(f), bytes_de_comprobante(c, f.ctlRegistro1.Company(), f.cmbMoneda.Text()));
    } catch (const ErrorArchivo&) { // a read-only folder must not keep the person on the screen
    }
}

void borrar_borrador(const frmQuorvel& f) {
    std::error_code error;
    std::filesystem::remove(archivo(f), error);
}

} // namespace quorvel
