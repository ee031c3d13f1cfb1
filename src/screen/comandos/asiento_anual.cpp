#include "screen/comandos/asiento_anual.h"

#include "screen/campos.h"
#include "screen/frmQuorvel.h"
#include "screen/papeles/ocupado.h"
#include "yearend/descuadrados.h"

namespace quorvel {

bool aceptar_descuadrados(frmQuorvel& f, int anio) {
    const std::string lista = lista_descuadrados(*f.glbdb, EmpresaAnio{f.glbEmpresa, anio});
    return lista.empty() ||
           f.pregunta("Lista de Comprobantes descuadrados " + lista + "\r\nDesea continuar de todas formas");
}

std::optional<AsientoGenerado>
generar_con_avance(frmQuorvel& f, const std::function<ResultadoAsiento(const Avance&)>& regla) {
    ResultadoAsiento r;
    {
        const Ocupado ocupado(f.escritorio());
        r = regla([&](long filas) { return f.escritorio().progress("Generando comprobante", filas, 0); });
    }
    if (r.rechazo) f.critico(r.rechazo->mensaje);
    if (r.rechazo || r.cancelado) return std::nullopt;
    return std::move(r.asiento);
}

void preparar_comprobante(frmQuorvel& f, Fecha fecha, const std::string& glosa) {
    limpiar_para_nuevo(f);
    if (f.cmbDocumento.ListCount() > 1) f.cmbDocumento.SetListIndex(1);
    f.mskF_comp.SetDate(fecha);
    proponer_numero_documento(f); // of the year and month of this date, not of the one shown before
    proponer_correlativo_libro(f);
    f.txtconcepto.SetText(glosa);
}

void agregar_lineas(frmQuorvel& f, const AsientoGenerado& a) {
    for (const LineaNumerada& n : a.lineas) {
        std::vector<std::string> celdas{std::to_string(n.contador),
                                        n.linea.centro,
                                        n.linea.auxiliar,
                                        n.linea.debe,
                                        n.linea.haber,
                                        n.linea.glosa};
        if (!n.linea.num_ref.empty()) celdas.insert(celdas.end(), {"", "", n.linea.num_ref, "", ""});
        f.grdDetalle.AddItem(fila_texto(celdas));
    }
    fijar_totales(f, a.total_debe, a.total_haber);
}

} // namespace quorvel
