#include "platform/files/sha256.h"
#include "screen/adjuntos/adjuntos.h"
#include "screen/borrador.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"
#include "screen/papeles/ocupado.h"
#include "text/rut.h"
#include "voucher/bloqueo.h"
#include "voucher/grabar.h"
#include "voucher/pasos.h"
#include "voucher/validar.h"

namespace quorvel {

namespace {

void mostrar_rechazo(frmQuorvel& f, const Rechazo& r) {
    if (r.fila && r.columna) {
        f.grdDetalle.SetRow(*r.fila);
        f.grdDetalle.SetCol(*r.columna);
    }
    avisar(f, r);
    if (f.grdDetalle.EditActive()) return; // leaving the unfinished cell could bring a second message
    if (ui::Control* foco = r.va ? control_de(f, r.campo) : nullptr) foco->SetFocus();
}

bool rut_valido(frmQuorvel& f) {
    if (f.txtrut_persona.Text().empty()) return true;
    f.txtrut_persona.SetText(con_guion(f.txtrut_persona.Text()));
    return f.validarut();
}

bool validar(frmQuorvel& f, const Comprobante& c) {
    const EntradaValidacion e{.c = c,
                              .k = f.config,
                              .maestros = f.maestros,
                              .db = *f.glbdb,
                              .hoy = f.servicios.reloj.hoy(),
                              .nuevo = f.glbBanderaNuevo,
                              .editando = f.grdDetalle.EditActive() || f.grdDetalle.NewRowPending() == 1};
    const auto rechazo = ValidarComprobante(e);
    if (rechazo) mostrar_rechazo(f, *rechazo);
    return !rechazo;
}

OpcionesGrabar opciones(const frmQuorvel& f, const Comprobante& c) {
    OpcionesGrabar o;
    o.nuevo = f.glbBanderaNuevo;
    o.numero_propuesto = f.estado.numero_propuesto;
    o.registrar_cierre = f.estado.cierre_generado;
    o.anio = f.config.anio;
    o.hoy = f.servicios.reloj.hoy();
    if (f.estado.cortado) o.clave_anterior = f.estado.cortado->clave();
    o.huella = f.estado.huella_guardada;
    o.copiar_adjuntos = [&f, adjuntos = c.adjuntos](std::int64_t de, std::int64_t a) {
        return carpeta_adjuntos(f).copy_set(std::to_string(de), std::to_string(a), adjuntos);
    };
    o.sumar_adjunto = [&f](std::int64_t conjunto, const std::string& nombre) {
        const auto archivo = carpeta_adjuntos(f).find(std::to_string(conjunto), nombre);
        return archivo ? sha256_of_file(*archivo) : std::string();
    };
    o.avance = [&f](long hechos, long total) {
        return f.escritorio().progress("Grabando el comprobante", hechos, total);
    };
    return o;
}

ResultadoGrabar grabar(frmQuorvel& f, const Comprobante& c) {
    const Ocupado ocupado(f.escritorio());
    return GrabarComprobante(*f.glbdb, c, opciones(f, c));
}

/// The mark follows the key that was saved: a closing voucher that was cut or typed anew is one again.
void recordar_cierre(frmQuorvel& f, const Comprobante& c, bool cierre) {
    f.estado.cierre_generado = false;
    f.estado.comprobante_cierre = cierre;
    if (!cierre) return;
    f.config.f_comp_cierre = c.f_comp;
    f.config.documento_cierre = c.documento;
    f.config.num_docum_cierre = c.num_docum;
}

void numerar_lineas(frmQuorvel& f) {
    for (int i = 0; i < f.grdDetalle.Rows(); ++i) f.grdDetalle.SetTextMatrix(i, 0, std::to_string(i + 1));
}

/// A box waits for an answer; whoever enters vouchers all day only wants to know.
void avisar_grabado(frmQuorvel& f) {
    if (!f.servicios.propio) return f.informacion("Comprobante Ingresado y Mayorizado");
    const bool imprime = f.ctlRegistro1.enabled(ui::ctlRegistro::Function::Print);
    f.estado.grabado = "Grabado: " + f.cmbDocumento.Text() + ", Nro. " + f.txtNum_doc.Text() +
                       (imprime ? "  ·  F6 lo imprime" : "") + "  ·  F2 sigue con otro";
}

void mostrar_grabado(frmQuorvel& f, Comprobante c, const ResultadoGrabar& r) {
    c.comprobante_adjunto = r.comprobante_adjunto;
    fijar_conjunto(f, std::to_string(c.comprobante_adjunto));
    f.lblEstado.SetCaption("P");
    if (f.glbBanderaNuevo) {
        f.glbBanderaNuevo = false;
        f.ctlRegistro1.RecordStored();
        permitir_identidad(f, false);
    }
    recordar_cierre(f, c, r.cierre);
    numerar_lineas(f);
    f.RecalcularTotales();
    f.lblF_ult_modificacion.SetCaption(fecha_dmy(f.servicios.reloj.hoy()));
    f.lblUsuario.SetCaption(std::to_string(f.glbUsuario) + " " + f.glbN_usuario);
    c.estado = "P";
    f.estado.cotizacion_exacta = c.cotizacion;
    f.estado.cotizacion_mostrada = f.txtCotizacion.Text();
    f.estado.cargado = std::move(c);
    f.estado.cortado.reset();
    f.SetCaption(titulo(f, "P"));
    f.estado.huella_guardada = r.huella;
    f.borrador->grabado();
    avisar_grabado(f);
}

} // namespace

void guardar(frmQuorvel& f) {
    if (!rut_valido(f)) return;
    const Comprobante c = leer_pantalla(f);
    const auto ya = f.estado.en_duda == EnDuda::grabar
                        ? grabado_sin_respuesta(*f.glbdb, c, f.servicios.reloj.hoy())
                        : std::nullopt;
    if (!ya && !validar(f, c)) return;
    const ResultadoGrabar r = ya ? *ya : grabar(f, c);
    anotar_desenlace(f, r.desenlace, EnDuda::grabar);
    r.desenlace ? mostrar_grabado(f, c, r) : avisar(f, r.desenlace.rechazo);
    f.grdDetalle.SetFocus();
    if (r.desenlace) { // a lock belongs to a saved voucher of one's own
        desbloquear(*f.glbdb, f.glbEmpresa, f.glbUsuario);
        bloquear(*f.glbdb, f.estado.cargado->clave(), f.glbUsuario);
    }
    quitar_copias(f, c, r);
}

} // namespace quorvel
