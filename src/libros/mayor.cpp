#include "libros/mayor.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"

namespace quorvel::libros {
namespace {

Fecha primer_dia(Fecha f) { return f.year() / std::chrono::January / 1; }

/// Sums per account first: names are joined to the few rows that come out.
std::string sql_mayor(clsConexion& db, const PedidoLibro& p) {
    const auto norma = libros::filtro_norma(p);
    const std::string desde = sql_fecha(p.desde),
                      clave = p.por_auxiliar ? "a.centro, coalesce(a.auxiliar,'')" : "a.centro",
                      columnas = p.por_auxiliar ? clave + " as auxiliar" : clave;
    const auto suma = [&](const char* columna, const char* cuando, const char* nombre) {
        return std::string(", sum(case when a.f_comp") + cuando + desde + " then a." + columna +
               " else 0 end) as " + nombre;
    };
    const std::string sumas =
        "select " + columnas + suma("debe_nacional", "<", "antes_debe") +
        suma("haber_nacional", "<", "antes_haber") + suma("debe_nacional", ">=", "debe") +
        suma("haber_nacional", ">=", "haber") + ", sum(case when a.f_comp>=" + desde +
        " then 1 else 0 end) as movimientos from ctdquorvel a" + norma.tabla + " where" +
        libros::condicion_lineas(db, p, primer_dia(p.desde)) + norma.condicion +
        (p.cuenta.empty() ? "" : " and a.centro=" + sql_texto(p.cuenta)) + " group by " + clave;
    return std::string("select s.centro, m.n_centro, s.antes_debe, s.antes_haber, s.debe, s.haber, "
                       "s.movimientos") +
           (p.por_auxiliar ? ", s.auxiliar, x.n_auxiliar" : "") + " from (" + sumas +
           ") s left join ctmcentros m on m.centro=s.centro" +
           (p.por_auxiliar ? " left join ctxaux_cod x on x.auxiliar=s.auxiliar order by s.centro, s.auxiliar"
                           : " order by s.centro");
}

} // namespace

std::vector<CuentaMayor> leer_mayor(clsConexion& db, const PedidoLibro& p) {
    std::vector<CuentaMayor> cuentas;
    for (const auto rs = db.NewRecord(sql_mayor(db, p)); !rs->eof(); rs->MoveNext()) {
        const auto texto = [&](std::size_t i) { return recortar_fin(rs->at(i).text()); };
        CuentaMayor c{texto(0),
                      texto(1),
                      p.por_auxiliar ? texto(7) : "",
                      p.por_auxiliar ? texto(8) : "",
                      rs->at(2).integer() - rs->at(3).integer(),
                      rs->at(4).integer(),
                      rs->at(5).integer()};
        if (c.anterior != 0 || rs->at(6).integer() > 0) cuentas.push_back(std::move(c));
    }
    return cuentas;
}

SeleccionMayor movimientos_de(const CuentaMayor& c, const PedidoLibro& p) {
    return {c.centro, p.por_auxiliar ? std::optional(c.auxiliar) : std::nullopt};
}

std::vector<Movimiento> leer_movimientos(clsConexion& db, const PedidoLibro& p, const SeleccionMayor& s,
                                         std::int64_t anterior, const std::optional<Movimiento>& despues,
                                         int filas) {
    const auto norma = libros::filtro_norma(p);
    std::string sql = "select top " + std::to_string(filas) +
                      " a.f_comp, a.documento, a.num_docum, a.secuencia, a.auxiliar, a.glosa, a.num_ref, "
                      "a.debe_nacional, a.haber_nacional from ctdquorvel a" +
                      norma.tabla + " where" +
                      libros::condicion_lineas(db, p, despues ? despues->donde.f_comp : p.desde) +
                      norma.condicion + " and a.centro=" + sql_texto(s.centro);
    if (s.auxiliar && s.auxiliar->empty()) sql += " and (a.auxiliar='' or a.auxiliar is null)";
    if (s.auxiliar && !s.auxiliar->empty()) sql += " and a.auxiliar=" + sql_texto(*s.auxiliar);
    if (despues) sql += libros::condicion_despues(despues->donde, "a", "a.secuencia");
    sql += libros::orden_libro("a", "a.secuencia");
    std::int64_t saldo = despues ? despues->saldo : anterior;
    std::vector<Movimiento> movimientos;
    for (const auto rs = db.NewRecord(sql); !rs->eof(); rs->MoveNext()) {
        const auto texto = [&](std::size_t i) { return recortar_fin(rs->at(i).text()); };
        const std::int64_t debe = rs->at(7).integer(), haber = rs->at(8).integer();
        saldo += debe - haber;
        movimientos.push_back(
            {{rs->at(0).date().value_or(Fecha{}), texto(1), texto(2), static_cast<int>(rs->at(3).integer())},
             texto(4),
             texto(5),
             texto(6),
             debe,
             haber,
             saldo});
    }
    return movimientos;
}

bool recorrer_movimientos(clsConexion& db, const PedidoLibro& p, const SeleccionMayor& s,
                          std::int64_t anterior, const std::function<bool(const Movimiento&)>& fila) {
    std::optional<Movimiento> despues;
    while (true) {
        auto pagina = leer_movimientos(db, p, s, anterior, despues);
        for (const Movimiento& m : pagina)
            if (!fila(m)) return false;
        if (pagina.size() < FILAS_POR_PAGINA) return true;
        despues = std::move(pagina.back());
    }
}

std::string titulos_mayor_csv() {
    return "Cuenta;Nombre;Auxiliar;Fecha;Documento;Número;Línea;Glosa;Referencia;Debe;Haber;Saldo";
}

std::string mayor_csv(const CuentaMayor& c) {
    return celda_csv(c.centro) + ";" + celda_csv(c.n_centro) + ";" + celda_csv(c.auxiliar) +
           ";;;;;Saldo anterior;;0;0;" + std::to_string(c.anterior);
}

std::string mayor_csv(const CuentaMayor& c, const Movimiento& m) {
    std::string linea = celda_csv(c.centro) + ";" + celda_csv(c.n_centro);
    for (const std::string& celda :
         {m.auxiliar, fecha_dmy(m.donde.f_comp), m.donde.documento, m.donde.num_docum,
          std::to_string(m.donde.secuencia), m.glosa, m.num_ref, std::to_string(m.debe),
          std::to_string(m.haber), std::to_string(m.saldo)})
        linea += ";" + celda_csv(celda);
    return linea;
}

} // namespace quorvel::libros
