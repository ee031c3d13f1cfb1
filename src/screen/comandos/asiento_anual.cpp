#include "screen/comandos/asiento_anual.h"

#include "screen/campos.h"
#include "screen/frmQuorvel.h"
#include "yearend/descuadrados.h"

namespace quorvel {

bool aceptar_descuadrados(frmQuorvel& f, int anio) {
    std::string lista;
    return con_avance(f, "Revisando los comprobantes del año",
                      [&](const Avance&) {
                          lista = lista_descuadrados(*f.glbdb, EmpresaAnio{f.glbEmpresa, anio});
                      }) &&
           (lista.empty() || f.pregunta("Lista de Comprobantes descuadrados " + lista +
                                        "\r\nDesea continuar de todas formas"));
}

std::optional<AsientoGenerado>
generar_con_avance(frmQuorvel& f, const std::function<ResultadoAsiento(const Avance&)>& regla) {
    ResultadoAsiento r;
    if (!con_avance(f, "Generando comprobante", [&](const Avance& avance) { r = regla(avance); }))
        return std::nullopt;
    if (!r.desenlace) {
        f.critico(r.desenlace.mensaje());
        return std::nullopt;
    }
    return std::move(r.asiento);
}

void nuevo_asiento(frmQuorvel& f, Fecha fecha, const std::string& glosa) {
    limpiar_para_nuevo(f);
    if (f.cmbDocumento.ListCount() > 1) f.cmbDocumento.SetListIndex(1);
    f.mskF_comp.SetDate(fecha);
    proponer_numero_documento(f); // of the year and month of this date, not of the one shown before
    proponer_correlativo_libro(f);
    f.txtconcepto.SetText(glosa);
}

void agregar_lineas(frmQuorvel& f, const AsientoGenerado& a) {
    std::vector<std::string> filas;
    filas.reserve(a.lineas.size());
    for (const LineaNumerada& n : a.lineas) filas.push_back(fila_de(n.contador, n.linea));
    f.grdDetalle.AddItems(filas);
    mostrar_totales(f, a.totales);
}

} // namespace quorvel
