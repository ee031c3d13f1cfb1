#include "libros/libros.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

namespace quorvel::libros {

std::optional<Rechazo> revisar_pedido(const PedidoLibro& p, bool en_un_anio) {
    const auto no = [](const char* texto) { return Rechazo{texto, Icono::exclamacion}; };
    if (!p.desde.ok() || !p.hasta.ok()) return no("Indique las dos fechas del período");
    if (p.desde > p.hasta) return no("La fecha inicial es posterior a la final");
    if (en_un_anio && anio(p.desde) != anio(p.hasta))
        return no("El período debe estar dentro de un mismo año: el asiento de apertura trae lo anterior");
    return std::nullopt;
}

std::string celda_csv(std::string_view texto) {
    if (texto.find_first_of(";\"\r\n") == std::string_view::npos) return std::string(texto);
    return '"' + reemplazar(texto, "\"", "\"\"") + '"';
}

namespace {
bool todas_las_normas(const PedidoLibro& p) { return p.norma.empty() || p.norma == "0"; }
} // namespace

std::string condicion_lineas(clsConexion& db, const PedidoLibro& p, Fecha desde) {
    std::string sql = " a.empresa=" + sql_numero(p.empresa) + " and a.f_comp between " + sql_fecha(desde) +
                      " and " + sql_fecha(p.hasta);
    if (!p.sin_cierre) return sql;
    for (const auto rs =
             db.NewRecord("select f_comp_cierre,documento_cierre,num_docum_cierre from ctmconfigu where "
                          "empresa=" +
                          sql_numero(p.empresa) + " and f_comp_cierre between " + sql_fecha(desde) + " and " +
                          sql_fecha(p.hasta));
         !rs->eof(); rs->MoveNext())
        sql += " and not (a.f_comp=" + sql_fecha(rs->at(0).date()) +
               " and a.documento=" + sql_texto(rs->at(1).text()) +
               " and a.num_docum=" + sql_texto(rs->at(2).text()) + ")";
    return sql;
}

FiltroNorma filtro_norma(const PedidoLibro& p) {
    if (todas_las_normas(p)) return {};
    return {", ctcquorvel c",
            " and c.empresa=a.empresa and c.f_comp=a.f_comp and c.documento=a.documento and "
            "c.num_docum=a.num_docum and (c.ifrs is null or c.ifrs in ('0'," +
                sql_texto(p.norma) + "))"};
}

std::string condicion_despues(const Posicion& d, const std::string& t, const std::string& secuencia) {
    const std::string numero = sql_texto(d.num_docum), valor = sql_numero(val_entero(d.num_docum));
    const std::string misma =
        " or " + t + ".num_docum=" + numero + " and " + secuencia + ">" + sql_numero(d.secuencia);
    const std::string mismo_documento =
        " or val(" + t + ".num_docum)=" + valor + " and (" + t + ".num_docum>" + numero + misma + ")";
    const std::string mismo_dia = " or " + t + ".documento=" + sql_texto(d.documento) + " and (val(" + t +
                                  ".num_docum)>" + valor + mismo_documento + ")";
    return " and (" + t + ".f_comp>" + sql_fecha(d.f_comp) + " or " + t + ".documento>" +
           sql_texto(d.documento) + mismo_dia + ")";
}

std::string orden_libro(const std::string& t, const std::string& secuencia) {
    return " order by " + t + ".f_comp, " + t + ".documento, val(" + t + ".num_docum), " + t +
           ".num_docum, " + secuencia;
}

} // namespace quorvel::libros
