#include "screen/comandos/asiento_anual.h"
#include "screen/comandos/comandos.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "voucher/validar.h"
#include "yearend/cierre.h"

namespace quorvel {
namespace {

constexpr const char* PREGUNTA =
    "Desea Generar Comprobante para Cierre Anual, \r\n"
    "Se recomienda sacar respaldo de la base antes de ejecutar, \r\n"
    "Porque despues de ejecutada esta opción no se podra ingresar\r\n"
    "ningun otro comprobante en este año, ni se podra anular el mismo.\r\n"
    "Con el respaldo en caso de existir un error se puede recuperar y volver\r\n"
    " a Generar el Comprobante. Una vez Grabado el Comprobante de Cierre Anual\r\n"
    " Recomendamos Cerrar el Año de Forma Inmediata";

Decimal suma(const frmQuorvel& f, int columna) {
    Decimal total;
    for (int i = 0; i < f.grdDetalle.Rows(); ++i)
        total = total + Decimal::leer(f.grdDetalle.TextMatrix(i, columna));
    return total;
}

} // namespace

void generar_cierre(frmQuorvel& f) {
    if (!f.pregunta(PREGUNTA)) return;
    // Another screen may have generated the closing or closed the year since this one was opened.
    const Configuracion k = leer_configuracion(*f.glbdb, f.glbEmpresa, f.servicios.reloj.hoy());
    if (!k.existe) return f.critico("Empresa no configurada");
    f.config = k; // the save records the closing in this very year
    // one that is annulled, or that a colleague works on, takes no more lines
    const bool rehacer = f.estado.comprobante_cierre && k.f_comp_cierre && f.ctlRegistro1.ModifyEnabled();
    if (!rehacer && cierre_vigente(*f.glbdb, f.glbEmpresa, k))
        return f.critico("Comprobante de Cierre ya fue Generado");
    const std::string texto_anio = std::to_string(k.anio);
    if (!tiene_movimientos(*f.glbdb, f.glbEmpresa, k.anio))
        return f.critico("Antes de Generar Comprobante de Cierre debe ingresar los movimientos del año " +
                         texto_anio);
    if (!aceptar_descuadrados(f, k.anio)) return;

    const Fecha fin_de_anio = std::chrono::year(k.anio) / std::chrono::December / 31;
    PedidoCierre p{
        f.glbEmpresa, fin_de_anio, "CIERRE ANUAL DEL AÑO " + texto_anio, k.centro_gan, k.centro_per, {}, {}};
    if (rehacer) { // header and lines stay, so the totals go on from them
        p.hasta = f.mskF_comp.date().value_or(fin_de_anio);
        p.glosa = f.txtconcepto.Text();
        p.debe = suma(f, DEBE);
        p.haber = suma(f, HABER);
    }
    const auto asiento = generar_con_avance(
        f, [&](const Avance& avance) { return generar_lineas_cierre(*f.glbdb, p, avance); });
    if (!asiento) return;
    if (!rehacer) nuevo_asiento(f, p.hasta, p.glosa);
    agregar_lineas(f, *asiento);
    f.estado.cierre_generado = true;
}

} // namespace quorvel
