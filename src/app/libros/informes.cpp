#include "app/libros/informes.h"

#include "app/libros/grafico.h"
#include "historia/cadena.h"
#include "libros/diario.h"
#include "libros/mayor.h"
#include "libros/mensual.h"
#include "platform/db/literal.h"
#include "qt/report/QtReportPrinter.h"
#include "qt/report/painting.h"
#include "text/numeros.h"

#include <stdexcept>

namespace quorvel::app {

using namespace libros;
namespace {

using Fila = std::vector<Value>;

struct Columna {
    const char* nombre;
    ColumnKind kind = ColumnKind::text;
};

/// What tells later whether the vouchers of the printed days are still those.
std::string historia(clsConexion& db, const PedidoLibro& p) {
    const std::string codigo = codigo_historia(db, p.empresa, p.desde, p.hasta);
    return codigo.empty() ? "" : " · historia " + codigo;
}

/// A table for a definition; every row begins with what the page header shows.
class TablaInforme {
public:
    TablaInforme(clsConexion& db, Libro libro, const PedidoLibro& p,
                 std::initializer_list<Columna> columnas) {
        const auto rs =
            db.NewRecord("select n_empresa, rut from admempresa where empresa=" + sql_numero(p.empresa));
        comun_ = {Value(rs->eof() ? "" : rs->at(0).text()), Value(rs->eof() ? "" : rs->at(1).text()),
                  Value(titulo_libro(libro)),
                  Value(texto_periodo(p) + (libro == Libro::diario ? historia(db, p) : ""))};
        for (const char* nombre : {"empresa", "rut", "titulo", "periodo", "tipo"})
            datos.columns.push_back({nombre, ColumnKind::text});
        for (const Columna& c : columnas) datos.columns.push_back({c.nombre, c.kind});
    }
    /// @param tipo which items of the detail band show the row
    void fila(const char* tipo, const Fila& celdas) {
        Fila todas = comun_;
        todas.emplace_back(std::string(tipo));
        todas.insert(todas.end(), celdas.begin(), celdas.end());
        todas.resize(datos.columns.size());
        datos.rows.push_back(std::move(todas));
    }
    /// An empty book says so.
    report::Data terminar() {
        if (datos.rows.empty()) fila("vacio", {});
        return std::move(datos);
    }
    report::Data datos;

private:
    Fila comun_;
};

constexpr auto NUMERO = ColumnKind::number;

Value texto(const std::string& t) { return {t}; }
std::string comprobante(const Posicion& p) { return p.documento + " " + p.num_docum; }

report::Data datos_diario(clsConexion& db, const PedidoLibro& p) {
    TablaInforme t(db, Libro::diario, p,
                   {{"fecha"},
                    {"comprobante"},
                    {"libro"},
                    {"concepto"},
                    {"cuenta"},
                    {"nombre"},
                    {"auxiliar"},
                    {"glosa"},
                    {"debe", NUMERO},
                    {"haber", NUMERO}});
    std::string anterior;
    recorrer_diario(db, p, [&](const RenglonDiario& r) {
        const std::string este = fecha_dmy(r.donde.f_comp) + " " + comprobante(r.donde);
        if (este != anterior)
            t.fila("cabecera", {fecha_dmy(r.donde.f_comp), comprobante(r.donde) + " " + r.n_documento,
                                r.libro, r.estado == "X" ? "(ANULADO) " + r.concepto : r.concepto});
        anterior = este;
        if (r.donde.secuencia > 0)
            t.fila("linea", {Value(), Value(), Value(), Value(), texto(r.centro), texto(r.n_centro),
                             texto(r.auxiliar), texto(r.glosa), Value(r.debe), Value(r.haber)});
        return true;
    });
    return t.terminar();
}

report::Data datos_mayor(clsConexion& db, const PedidoLibro& p) {
    TablaInforme t(db, Libro::mayor, p,
                   {{"fecha"},
                    {"comprobante"},
                    {"auxiliar"},
                    {"glosa"},
                    {"referencia"},
                    {"cuenta"},
                    {"nombre"},
                    {"debe", NUMERO},
                    {"haber", NUMERO},
                    {"saldo", NUMERO}});
    for (const CuentaMayor& c : leer_mayor(db, p)) {
        const std::string quien = c.auxiliar.empty() ? "" : " · " + c.auxiliar + " " + c.n_auxiliar;
        t.fila("cuenta", {Value(), Value(), Value(), Value(), Value(), texto(c.centro),
                          texto(c.n_centro + quien), Value(), Value(), Value(c.anterior)});
        recorrer_movimientos(db, p, movimientos_de(c, p), c.anterior, [&](const Movimiento& m) {
            t.fila("linea", {fecha_dmy(m.donde.f_comp), comprobante(m.donde), m.auxiliar, m.glosa, m.num_ref,
                             Value(), Value(), Value(m.debe), Value(m.haber), Value(m.saldo)});
            return true;
        });
        // shown beside, so that the sums of the page count each amount once
        t.fila("total", {Value(), Value(), Value(), formato(static_cast<double>(c.debe), "#,##0"),
                         formato(static_cast<double>(c.haber), "#,##0"),
                         texto(c.centro + (c.auxiliar.empty() ? "" : " · " + c.auxiliar)), texto(c.n_centro),
                         Value(), Value(), Value(c.saldo())});
    }
    return t.terminar();
}

report::Data datos_balance(clsConexion& db, const PedidoLibro& p) {
    TablaInforme t(db, Libro::balance, p,
                   {{"cuenta"},
                    {"nombre"},
                    {"debitos", NUMERO},
                    {"creditos", NUMERO},
                    {"deudor", NUMERO},
                    {"acreedor", NUMERO},
                    {"activo", NUMERO},
                    {"pasivo", NUMERO},
                    {"perdida", NUMERO},
                    {"ganancia", NUMERO}});
    const Balance b = leer_balance(db, p);
    const auto fila = [&](const char* tipo, const LineaBalance& l) {
        Fila celdas{texto(l.centro), texto(l.nombre)};
        for (const std::int64_t monto : columnas_balance(l)) celdas.emplace_back(monto);
        t.fila(tipo, celdas);
    };
    for (const LineaBalance& l : b.cuentas) fila("linea", l);
    for (const LineaBalance* l : {&b.sumas, &b.resultado, &b.totales}) fila("suma", *l);
    return t.terminar();
}

struct Definicion {
    const char* archivo;
    report::Data (*datos)(clsConexion&, const PedidoLibro&);
};
constexpr Definicion DEFINICIONES[] = {{"libro_diario.rpt", datos_diario},
                                       {"libro_mayor.rpt", datos_mayor},
                                       {"libro_balance.rpt", datos_balance}};

void exigir_tamano(clsConexion& db, const PedidoLibro& p) {
    const auto rs =
        db.NewRecord("select count(*) as n from ctdquorvel a where" + condicion_lineas(db, p, p.desde));
    if (rs->at(0).integer() > MAXIMO_LINEAS_PDF)
        throw std::runtime_error("El período tiene " +
                                 formato(static_cast<double>(rs->at(0).integer()), "#,##0") +
                                 " líneas: elija uno más corto para el PDF, o use CSV");
}

} // namespace

std::string texto_periodo(const PedidoLibro& p) {
    std::string t = "Desde " + fecha_dmy(p.desde) + " hasta " + fecha_dmy(p.hasta);
    if (p.norma == "1") t += ", norma tributaria";
    if (p.norma == "2") t += ", norma IFRS";
    if (p.sin_cierre) t += ", sin el comprobante de cierre";
    return t;
}

report::Layout componer_libro(clsConexion& db, Libro libro, const PedidoLibro& p,
                              const std::filesystem::path& definiciones) {
    if (libro != Libro::balance) exigir_tamano(db, p);
    const Definicion& cual = DEFINICIONES[static_cast<std::size_t>(libro)];
    const auto definicion = report::read_definition(definiciones / cual.archivo);
    const report::Data datos = cual.datos(db, p);
    report::check_fields(definicion, datos.columns);
    return report::compose(definicion, datos, qt::text_width);
}

void escribir_libro_pdf(clsConexion& db, Libro libro, const PedidoLibro& p,
                        const std::filesystem::path& definiciones, const std::filesystem::path& archivo) {
    if (libro == Libro::mensual)
        return escribir_grafico_pdf(leer_totales_mensuales(db, p.empresa, anio(p.desde)), anio(p.desde),
                                    archivo);
    qt::write_pdf(componer_libro(db, libro, p, definiciones), archivo, titulo_libro(libro));
}

} // namespace quorvel::app
