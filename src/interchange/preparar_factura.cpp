#include "interchange/factura.h"
#include "interchange/monto_papel.h"
#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <array>

namespace quorvel {

namespace {

constexpr std::array MESES{"ENERO", "FEBRERO", "MARZO",      "ABRIL",   "MAYO",      "JUNIO",
                           "JULIO", "AGOSTO",  "SEPTIEMBRE", "OCTUBRE", "NOVIEMBRE", "DICIEMBRE"};

std::string cortado(std::string_view t, std::size_t n) { return sql_texto(primeros(t, n)); }
std::string numero(const std::string& texto) {
    const auto n = monto_sql(texto);
    if (!n) throw std::runtime_error("\"" + texto + "\" no es un número");
    return *n;
}

/// The columns from dia to texto1, the same in every row.
std::string inicio_de_fila(const Factura& f) {
    const MontoPapel total = monto_papel(f.total);
    std::string dia_, mes_, anio_, fecha;
    if (f.fecha) {
        dia_ = formato(dia(*f.fecha), "00");
        mes_ = MESES.at(static_cast<std::size_t>(mes(*f.fecha) - 1));
        anio_ = std::to_string(anio(*f.fecha));
        fecha = dia_ + " de " + mes_ + " de " + anio_;
    }
    return sql_texto(dia_) + "," + sql_texto(mes_) + "," + sql_texto(anio_) + "," + sql_texto(fecha) + "," +
           cortado(f.numero, 20) + "," + total.cifra + "," + numero(f.iva) + "," + numero(f.neto) + "," +
           sql_texto(total.letras) + ",";
}
/// Whole: the paper itself makes a long text smaller, or marks where it had to end.
std::string cliente(const Cliente& c) {
    std::string columnas;
    for (const std::string* t :
         {&c.ruc, &c.nombre, &c.direccion, &c.comuna, &c.ciudad, &c.giro, &c.telefonos})
        columnas += sql_texto(*t) + ",";
    return columnas;
}

/// The column holds whole quantities: a broken one becomes one unit at the line's price, and the description
/// says what it is made of.
struct Detalle {
    std::string descripcion, cantidad, precio;
};
Detalle detalle(const LineaFactura& l) {
    Detalle d{l.descripcion, numero(l.cantidad), numero(l.precio)};
    if (d.cantidad.find('.') != std::string::npos)
        d = {l.descripcion + " (" + l.cantidad + " x " + l.precio + ")", "1", numero(l.total)};
    return d;
}

} // namespace

void preparar_factura(clsConexion& reporte, const Factura& f) {
    Transaccion t(reporte);
    ejecutar_impresion(reporte, "delete from ctcfactura");
    if (f.lineas.empty())
        ejecutar_impresion(reporte, "insert into ctcfactura(secuencia,cantidad, precio) values(0,0,1)");
    const std::string inicio = inicio_de_fila(f), datos = cliente(f.cliente);
    int secuencia = 0;
    for (const LineaFactura& l : f.lineas) {
        const Detalle d = detalle(l);
        ejecutar_impresion(reporte, "insert into ctcfactura values(" + std::to_string(++secuencia) + "," +
                                        inicio + cortado(d.descripcion, 150) + "," + cortado(l.total, 150) +
                                        "," + datos + d.cantidad + "," + d.precio + ")");
    }
    t.confirmar();
}

} // namespace quorvel
