#include "screen/adjuntos/adjuntos.h"
#include "screen/borrador.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/comandos/procesado.h"
#include "screen/frmQuorvel.h"
#include "screen/permisos.h"
#include "screen/recargar_documentos.h"
#include "voucher/cargar.h"

namespace quorvel {

void RenovarComprobante(frmQuorvel& f) {
    desbloquear_usuario(f);
    f.estado.comprobante_cierre = f.estado.cierre_generado = false;
    f.estado.cargado.reset();
    f.estado.grabado.clear();
    f.glbBanderaNuevo = f.glbBanderaLeer = true;
    permitir_identidad(f, true);
    f.lblEstado.SetCaption(""); // what is on the screen is saved nowhere
    f.lblUsuario.SetCaption(std::to_string(f.glbUsuario) + " " + f.glbN_usuario);
    f.lblF_ult_modificacion.SetCaption(fecha_dmy(f.servicios.reloj.hoy()));
    f.lblsubsistema.SetCaption("01 Contabilidad");
    f.lblCuenta.SetCaption("");
    f.lblAuxiliar.SetCaption("");
    f.estado.ultima_cuenta.clear();
    f.SetCaption("Comprobante Contable");
    f.ctlRegistro1.NewRecord();
    const auto p = permisos(f.glbPermiso);
    permitir_cambios(f, true, p[PERMISO_BORRAR_LINEA], p[PERMISO_IMPRIMIR], "");
    proponer_correlativo_libro(f);
}

void cortar(frmQuorvel& f) {
    if (!exigir_procesado(f)) return;
    if (!f.pregunta(
            "Esta seguro que desea cortar el Comprobante Contable\r\nNota: Utilice esta opción para "
            "modificar la fecha y numero de comprobante, no olvide presionar el botón actualizar una vez "
            "realizado los cambios, porque sino graba el comprobante este se elimina"))
        return;
    // from the deletion until it is saved again it exists nowhere else
    if (!f.borrador->conservar() &&
        !f.pregunta(
            "No se puede guardar un borrador en el disco: hasta que grabe, el comprobante estará solo "
            "en la pantalla. ¿Desea cortarlo de todas formas?"))
        return f.borrador->desistir();
    const Desenlace d = eliminar_cargado(f, operacion::CORTADO);
    if (!d) {
        if (d.como == Desenlace::rechazado) f.borrador->desistir(); // it is stored all the same
        return avisar(f, d.rechazo);
    }
    f.estado.cortado = f.estado.cargado;
    RenovarComprobante(f); // the attachment set stays: its files are where they were
}

void copiar(frmQuorvel& f) {
    if (!f.glbBanderaNuevo) { // two vouchers never share a set: deleting one would take the other's files
        const Attachments carpeta = carpeta_adjuntos(f);
        const std::string origen = f.gstrcomprobante_adjunto;
        fijar_conjunto(f, carpeta.first_free(numero_adjunto(*f.glbdb, std::nullopt)));
        if (f.lstadjunto.ListCount() > 0 &&
            !carpeta.copy_set(origen, f.gstrcomprobante_adjunto, entradas(f.lstadjunto))) {
            f.lstadjunto.Clear();
            f.exclamacion("No se pudieron copiar los archivos adjuntos");
        }
    }
    f.borrador->obligar();
    RenovarComprobante(f); // after a cut its cheque still belongs to what is on the screen
    f.cmbDocumento.SetFocus();
}

} // namespace quorvel
