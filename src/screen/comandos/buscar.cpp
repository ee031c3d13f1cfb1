#include "screen/abrir.h"
#include "screen/adjuntos/adjuntos.h"
#include "screen/borrador.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/consultas/consultas.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "screen/permisos.h"
#include "text/letras_utf8.h"
#include "voucher/bloqueo.h"
#include "voucher/cargar.h"
#include "voucher/validar.h"

namespace quorvel {

namespace {

constexpr const char* NO_PROCESADO = "Solo un comprobante procesado se puede modificar";

/// Whether the shown state lets a voucher be changed, and why not.
struct Permitido {
    bool modificar = true, borrar_linea = true, imprimir = true;
    std::string motivo;
};

Permitido segun_estado(const frmQuorvel& f, const Comprobante& c) {
    const auto p = permisos(f.glbPermiso);
    Permitido r{true, p[PERMISO_BORRAR_LINEA], p[PERMISO_IMPRIMIR], ""};
    if (c.estado != "P") r = {false, false, false, c.estado == "X" ? ANULADO : NO_PROCESADO};
    if (c.subsistema != "01") {
        r.modificar = r.borrar_linea = false;
        r.motivo = "El comprobante pertenece a otro subsistema";
    }
    return r;
}

/// Rates are stored with a point and shown with a comma.
void tasas_con_coma(ui::ctlPlanilla& g) {
    for (int i = 0; i < g.Rows(); ++i) {
        const std::string tasa = g.TextMatrix(i, TASA);
        if (tasa.find('.') != std::string::npos) g.SetTextMatrix(i, TASA, reemplazar(tasa, ".", ","));
    }
}

void cargar_lineas(frmQuorvel& f, const Comprobante& c) {
    if (c.estado != "P") return f.grdDetalle.Clear();
    f.grdDetalle.SetRecordSource(consulta_lineas(c.clave()));
    f.grdDetalle.Load();
    tasas_con_coma(f.grdDetalle);
}

void cargar_adjuntos(frmQuorvel& f, const Comprobante& c) {
    f.lstadjunto.Clear();
    f.gstrcomprobante_adjunto = std::to_string(c.comprobante_adjunto);
    if (c.comprobante_adjunto <= 0) nuevo_conjunto(f); // set 0 is everybody's
    if (c.estado == "P") f.CargarAdjuntos();
    f.estado.cargado->adjuntos = entradas(f.lstadjunto);
    f.lblgstrcomprobante_adjunto.SetCaption(f.gstrcomprobante_adjunto);
}

/// What happens to the screen when the opening does not come to its end.
struct Apertura {
    enum { sin_tocar, a_medias, entera } pantalla = sin_tocar;
    frmQuorvel& f;
    ~Apertura() {
        if (pantalla == a_medias) // half a voucher must not be saved over the whole one
            permitir_cambios(f, false, false, false, "El comprobante no se pudo leer entero");
        if (pantalla != sin_tocar) return;
        desbloquear(*f.glbdb, f.glbEmpresa, f.glbUsuario); // back to the voucher that stays
        if (!f.glbBanderaNuevo && f.estado.cargado &&
            !bloqueado_por_otro(f.estado.cargado->bloqueo_usuario, f.glbUsuario))
            bloquear(*f.glbdb, f.estado.cargado->clave(), f.glbUsuario);
    }
};

void permitir(frmQuorvel& f, const Comprobante& c, Permitido permitido) {
    const bool ajeno = bloqueado_por_otro(c.bloqueo_usuario, f.glbUsuario);
    if (ajeno) {
        f.informacion(SOLO_LECTURA);
        permitido.modificar = permitido.borrar_linea = false;
        permitido.motivo = "Lo está modificando " + nombre_usuario(f, c.bloqueo_usuario);
    }
    permitir_cambios(f, permitido.modificar, permitido.borrar_linea, permitido.imprimir, permitido.motivo);
    if (c.subsistema == "01" && !ajeno)
        f.mnuEliminar.SetEnabled(true); // it says so when there is nothing to delete
}

} // namespace

void buscar(frmQuorvel& f) {
    const auto elegido = elegir_comprobante(f.escritorio(), *f.glbdb,
                                            consulta_busqueda(f.glbEmpresa, f.glbUsuario, f.glbAlias));
    if (!elegido) return;
    if (const auto fecha = leer_fecha_mdy(elegido->f_comp))
        abrir_comprobante(
            f, {f.glbEmpresa, elegido->subsistema, *fecha, elegido->documento, elegido->num_docum});
}

bool abrir_comprobante(frmQuorvel& f, const Clave& clave) {
    Apertura apertura{.f = f};
    const auto guardado = leer_con_bloqueo(*f.glbdb, clave, f.glbUsuario);
    if (!guardado) return false;
    const Comprobante& c = guardado->c;
    const Borrador::Cambio cambio(f);
    // another screen may have generated the closing since this one was opened
    const bool cierre =
        es_comprobante_cierre(c, leer_periodo(*f.glbdb, f.glbEmpresa, f.servicios.reloj.hoy()));
    cargar_lineas(f, c); // lines that cannot be read leave the screen as it is
    apertura.pantalla = Apertura::a_medias;
    f.estado.cierre_generado = false;
    f.estado.cortado.reset();
    f.estado.grabado.clear();
    f.ctlRegistro1.RecordShown();
    f.estado.cargado = c;
    f.estado.huella_guardada = guardado->huella; // older than what is read from here on
    f.estado.en_duda = EnDuda::ninguno;
    f.glbBanderaNuevo = false;
    f.estado.comprobante_cierre = cierre;
    mostrar_comprobante(f, c);
    cargar_adjuntos(f, c);
    mostrar_totales(f, c.totales);
    permitir(f, c, segun_estado(f, c));
    apertura.pantalla = Apertura::entera;
    return true;
}

} // namespace quorvel
