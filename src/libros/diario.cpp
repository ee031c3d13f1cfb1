#include "libros/diario.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"

namespace quorvel::libros {
namespace {

constexpr const char* SECUENCIA = "coalesce(a.secuencia,0)";

/// The vouchers of the request from a day on, told by their headers.
std::string condicion_cabeceras(const PedidoLibro& p, Fecha desde) {
    std::string sql = " c.empresa=" + sql_numero(p.empresa) + " and c.f_comp between " + sql_fecha(desde) +
                      " and " + sql_fecha(p.hasta);
    if (!libros::filtro_norma(p).tabla.empty())
        sql += " and (c.ifrs is null or c.ifrs in ('0'," + sql_texto(p.norma) + "))";
    return sql;
}

RenglonDiario leer_renglon(Recordset& rs) {
    const auto texto = [&](std::size_t i) { return recortar_fin(rs.at(i).text()); };
    RenglonDiario r;
    r.donde = {rs.at(0).date().value_or(Fecha{}), texto(1), texto(2), static_cast<int>(rs.at(3).integer())};
    r.n_documento = texto(4);
    r.concepto = texto(5);
    r.libro = texto(6);
    r.estado = texto(7);
    r.centro = texto(8);
    r.n_centro = texto(9);
    r.auxiliar = texto(10);
    r.glosa = texto(11);
    r.num_ref = texto(12);
    r.debe = rs.at(13).integer();
    r.haber = rs.at(14).integer();
    return r;
}

} // namespace

std::vector<RenglonDiario> leer_diario(clsConexion& db, const PedidoLibro& p,
                                       const std::optional<Posicion>& despues, int filas) {
    std::string sql = "select top " + std::to_string(filas) + " c.f_comp, c.documento, c.num_docum, " +
                      SECUENCIA +
                      ", t.n_documento, c.concepto, c.libro, c.estado, a.centro, m.n_centro, a.auxiliar, "
                      "a.glosa, a.num_ref, a.debe_nacional, a.haber_nacional from ctcquorvel c "
                      "left join ctdquorvel a on a.empresa=c.empresa and a.f_comp=c.f_comp and "
                      "a.documento=c.documento and a.num_docum=c.num_docum "
                      "left join ctmcentros m on m.centro=a.centro "
                      "left join admdocumen t on t.documento=c.documento where" +
                      condicion_cabeceras(p, despues ? despues->f_comp : p.desde);
    if (despues) sql += libros::condicion_despues(*despues, "c", SECUENCIA);
    sql += libros::orden_libro("c", SECUENCIA);
    std::vector<RenglonDiario> renglones;
    for (const auto rs = db.NewRecord(sql); !rs->eof(); rs->MoveNext())
        renglones.push_back(leer_renglon(*rs));
    return renglones;
}

bool recorrer_diario(clsConexion& db, const PedidoLibro& p,
                     const std::function<bool(const RenglonDiario&)>& renglon) {
    std::optional<Posicion> despues;
    while (true) {
        const auto pagina = leer_diario(db, p, despues);
        for (const RenglonDiario& r : pagina)
            if (!renglon(r)) return false;
        if (pagina.size() < FILAS_POR_PAGINA) return true;
        despues = pagina.back().donde;
    }
}

TotalesDiario totales_diario(clsConexion& db, const PedidoLibro& p) {
    TotalesDiario t;
    const auto cabeceras = db.NewRecord("select count(*) as n from ctcquorvel c where" +
                                        condicion_cabeceras(p, p.desde) + " and c.estado<>'X'");
    t.comprobantes = cabeceras->at(0).integer();
    const auto norma = libros::filtro_norma(p);
    const auto lineas =
        db.NewRecord("select sum(a.debe_nacional) as debe, sum(a.haber_nacional) as haber "
                     "from ctdquorvel a" +
                     norma.tabla + " where" + libros::condicion_lineas(db, p, p.desde) + norma.condicion);
    t.debe = lineas->at(0).integer();
    t.haber = lineas->at(1).integer();
    return t;
}

std::string titulos_diario_csv() {
    return "Fecha;Documento;Número;Línea;Libro;Concepto;Estado;Cuenta;Nombre;Auxiliar;Glosa;Referencia;"
           "Debe;Haber";
}

std::string diario_csv(const RenglonDiario& r) {
    std::string linea = fecha_dmy(r.donde.f_comp);
    for (const std::string& celda : {r.donde.documento, r.donde.num_docum, std::to_string(r.donde.secuencia),
                                     r.libro, r.concepto, r.estado, r.centro, r.n_centro, r.auxiliar, r.glosa,
                                     r.num_ref, std::to_string(r.debe), std::to_string(r.haber)})
        linea += ";" + celda_csv(celda);
    return linea;
}

} // namespace quorvel::libros
