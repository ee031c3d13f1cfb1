#include "interchange/factura.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/rut.h"
#include "voucher/grabar_sql.h"
#include "voucher/iva.h"

namespace quorvel {

namespace {

constexpr const char* FORMATO = "#,##0";

/// A stored number as a cell shows it: "1.234" or "1,5".
std::string mostrar(const Value& v) {
    const double n = v.number();
    if (n == static_cast<double>(static_cast<std::int64_t>(n))) return formato(n, FORMATO);
    return reemplazar(v.text(), ".", ",");
}

Cliente cliente_de(Recordset& rs) {
    const auto texto = [&](const char* columna) { return recortar_fin(rs.fields(columna).Value.text()); };
    return {texto("cedula_ruc"), texto("n_persona"),   texto("direccion"), texto("provincia"),
            texto("ciudad"),     texto("observacion"), texto("telefonos")};
}

Decimal suma_de(const std::vector<LineaFactura>& lineas) {
    Decimal suma;
    for (const LineaFactura& l : lineas) suma = suma + Decimal::leer(l.total);
    return suma;
}

} // namespace

Decimal iva_del_comprobante(const Comprobante& c, const std::string& iva_venta,
                            const std::string& iva_compra) {
    const std::string cuenta = c.libro == "VENTAS"    ? iva_venta
                               : c.libro == "COMPRAS" ? iva_compra
                                                      : std::string();
    Decimal suma;
    if (cuenta.empty()) return suma;
    for (const Linea& l : c.lineas)
        if (recortar_fin(l.centro) == recortar_fin(cuenta))
            suma = suma + l.debe.value_or(0) + l.haber.value_or(0);
    return suma;
}

MontosFactura montos_iniciales(Decimal total, Decimal iva) {
    return {iva != 0 ? (total - iva).formato(FORMATO) : "0", iva.formato(FORMATO), total.formato(FORMATO)};
}

MontosFactura montos_del_neto(const std::string& neto) {
    const double n = valnumeroformato(neto);
    return {neto, formato(iva_de(n), FORMATO), formato(con_iva(n), FORMATO)};
}

std::string total_linea(const std::string& cantidad, const std::string& precio) {
    return formato(valnumeroformato(cantidad) * valnumeroformato(precio), FORMATO);
}

std::string cuadre_factura(const std::vector<LineaFactura>& lineas, const std::string& neto) {
    if (lineas.empty()) return "Escriba cada producto: descripción, cantidad y precio";
    const Decimal suma = suma_de(lineas), falta = Decimal::leer(neto) - suma;
    if (falta == Decimal()) return "✔ El detalle suma el neto";
    const bool sobra = falta < Decimal();
    return "Detalle " + suma.formato(FORMATO) + (sobra ? ", sobran " : ", faltan ") +
           (sobra ? Decimal() - falta : falta).formato("#,##0.##") + " para el neto";
}

std::optional<Cliente> buscar_cliente(clsConexion& db, const std::string& ruc) {
    const std::string tipo = recortar(ruc);
    if (tipo.empty()) return {};
    const ResultadoRut chileno = validarut(tipo);
    const auto rs = db.NewRecord("select * from admpersona where cedula_ruc=" + sql_texto(tipo) +
                                 " or cedula_ruc=" + sql_texto(reemplazar(tipo, ".", "")) +
                                 " or cedula_ruc=" + sql_texto(chileno.valido ? chileno.texto : tipo) +
                                 " order by persona");
    if (rs->eof()) return {};
    return cliente_de(*rs);
}

std::optional<Factura> leer_factura(clsConexion& db, const Clave& k) {
    const auto rs = db.NewRecord("select * from ftcfactura" + sql_clave_corta(k));
    if (rs->eof()) return {};
    Factura f;
    f.numero = recortar_fin(rs->fields("proforma").Value.text());
    f.fecha = rs->fields("fecha").Value.date();
    const auto persona = db.NewRecord("select * from admpersona where persona=" +
                                      sql_numero(rs->fields("cliente").Value.integer()));
    if (!persona->eof()) f.cliente = cliente_de(*persona);
    const auto lineas =
        db.NewRecord("select producto, observacion, cantidad, precio from ftdfactura where empresa=" +
                     sql_numero(k.empresa) + " and factura=" + sql_texto(rs->fields("factura").Value.text()) +
                     " order by val(producto)");
    for (; !lineas->eof(); lineas->MoveNext()) {
        LineaFactura l{recortar_fin(lineas->fields("observacion").Value.text()),
                       mostrar(lineas->fields("cantidad").Value),
                       mostrar(lineas->fields("precio").Value),
                       {}};
        l.total = total_linea(l.cantidad, l.precio);
        f.lineas.push_back(std::move(l));
    }
    return f;
}

std::optional<Rechazo> ValidarFactura(const Factura& f, bool editando) {
    constexpr int DESCRIPCION = 1, CANTIDAD = 2, PRECIO = 3;
    const auto no = [](std::string mensaje, Campo campo, std::optional<int> fila = {},
                       std::optional<int> col = {}) {
        return Rechazo{std::move(mensaje), Icono::critico, campo, true, fila, col};
    };
    if (recortar(f.numero).empty()) return no("Numero de factura no válido", Campo::numero);
    if (!f.fecha) return no("Fecha no válida", Campo::fecha);
    if (f.lineas.empty()) return no("Ingrese detalle la factura", Campo::detalle);
    if (editando)
        return no("Cuadricula en modo de edicion, cambiese de fila para cambiar el modo ", Campo::detalle);
    for (std::size_t i = 0; i < f.lineas.size(); ++i) {
        const LineaFactura& l = f.lineas[i];
        const int fila = static_cast<int>(i);
        if (recortar(l.descripcion).empty())
            return no("Descripcion en linea " + std::to_string(i + 1), Campo::detalle, fila, DESCRIPCION);
        if (recortar(l.cantidad).empty()) return no("Ingrese cantidad", Campo::detalle, fila, CANTIDAD);
        if (recortar(l.precio).empty()) return no("Ingrese precio unitario", Campo::detalle, fila, PRECIO);
    }
    const Decimal suma = suma_de(f.lineas), diferencia = suma - Decimal::leer(f.neto);
    if (diferencia == Decimal()) return {};
    return no("Total detalle " + suma.formato(FORMATO) + " es diferente a neto factura " + f.neto +
                  ". La diferencia es " + diferencia.formato(FORMATO),
              Campo::ninguno);
}

} // namespace quorvel
