#include "interchange/imprimir_comprobante.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/grabar_sql.h"

namespace quorvel {

namespace {

std::string cortado(std::string_view texto, std::size_t n) { return sql_texto(primeros(texto, n)); }

/// The columns from empresa to concepto, the same in every row.
std::string inicio_de_fila(const ImpresionComprobante& i) {
    return cortado(i.empresa, 50) + "," + cortado(i.usuario, 50) + "," + cortado(i.documento, 30) + "," +
           cortado(i.clave.num_docum, 10) + "," + sql_fecha(i.clave.f_comp) + "," + cortado(i.hora, 10) +
           "," + cortado(i.concepto, 150) + ",";
}

/// An account that has left the chart keeps its line, so that the paper balances.
std::string consulta(const Clave& k) {
    return "SELECT a.*,b.n_centro from ctdQuorvel a left join ctmcentros b on a.centro=b.centro" +
           sql_clave(k, "a.") + " order by a.secuencia";
}

std::string nombre_auxiliar(Recordset& auxiliares, const std::string& codigo) {
    if (codigo.empty()) return " ";
    auxiliares.FindFirst("auxiliar=" + sql_texto(codigo));
    return auxiliares.nomatch() ? " " : auxiliares.fields("n_auxiliar").Value.text();
}

std::string fila(const std::string& inicio, const std::string& firmas, Recordset& rs, Recordset& auxiliares) {
    const std::string auxiliar = recortar_fin(rs.fields("auxiliar").Value.text());
    std::string cuenta = recortar_fin(rs.fields("centro").Value.text());
    if (!auxiliar.empty()) cuenta += "-" + auxiliar;
    std::string n_cuenta = rs.fields("n_centro").Value.text();
    if (n_cuenta.empty()) n_cuenta = " ";
    const auto monto = [&](const char* columna) { return formato(rs.fields(columna).Value.number(), "0"); };
    return "insert into ctcQuorvel values(" + inicio + sql_numero(rs.fields("secuencia").Value.integer()) +
           "," + cortado(cuenta, 26) + "," + cortado(n_cuenta, 50) + "," +
           cortado(nombre_auxiliar(auxiliares, auxiliar), 80) + "," + monto("debe_nacional") + "," +
           monto("haber_nacional") + "," + cortado(rs.fields("glosa").Value.text(), 150) + firmas + ")";
}

} // namespace

bool preparar_comprobante(clsConexion& db, clsConexion& reporte, const ImpresionComprobante& i,
                          Recordset& auxiliares, const Avance& avance) {
    constexpr long CADA = 500;
    exigir_base_de_informes(db, reporte);
    const std::string inicio = inicio_de_fila(i);
    const std::string firmas =
        "," + cortado(i.revisado, 30) + "," + cortado(i.aprobado, 30) + "," + cortado(i.elaborado, 30);
    Transaccion t(reporte); // one write for thousands of lines, and the old rows come back after a failure
    ejecutar_impresion(reporte, "delete from ctcQuorvel");
    const auto rs = db.NewRecord(consulta(i.clave));
    const bool sin_lineas = rs->eof();
    for (long n = 1; !rs->eof(); rs->MoveNext(), ++n) {
        ejecutar_impresion(reporte, fila(inicio, firmas, *rs, auxiliares));
        if (n % CADA == 0 && avance && !avance(n, 0)) return false;
    }
    ejecutar_impresion(reporte,
                       "insert into ctcQuorvel(empresa, usuario, documento, num_doc, f_comp, hora, concepto, "
                       "secuencia, debe, haber) values(" +
                           inicio + "-1,0,0)");
    if (sin_lineas) // the captions under the signatures come with the lines
        ejecutar_impresion(reporte, "update ctcQuorvel set revisado=" + cortado(i.revisado, 30) +
                                        ",aprobado=" + cortado(i.aprobado, 30) +
                                        ",elaborado=" + cortado(i.elaborado, 30));
    t.confirmar();
    return true;
}

} // namespace quorvel
