#pragma once
#include "interchange/tablas_impresion.h"
#include "voucher/comprobante.h"
#include "voucher/configuracion.h"
#include "voucher/desenlace.h"

#include <optional>
#include <vector>

namespace quorvel {

/// A customer of the person master, as the invoice form shows it.
struct Cliente {
    std::string ruc, nombre, direccion, comuna, ciudad, giro, telefonos;
};
/// One product; amounts are displayed texts.
struct LineaFactura {
    std::string descripcion, cantidad, precio, total;
};
/// An invoice as the form holds it; amounts are displayed texts.
struct Factura {
    std::string numero; ///< typed and printed; the internal key is another one
    std::optional<Fecha> fecha;
    Cliente cliente;
    std::string neto, iva, total;
    std::vector<LineaFactura> lineas;
};

/// Net, VAT and total as the form shows them.
struct MontosFactura {
    std::string neto, iva, total;
};
/// VAT that the voucher's lines carry: the sales account in book VENTAS, the purchase account in COMPRAS.
[[nodiscard]] Decimal iva_del_comprobante(const Comprobante& c, const std::string& iva_venta,
                                          const std::string& iva_compra);
/// What the form opens with. @param total the voucher's debit total
[[nodiscard]] MontosFactura montos_iniciales(Decimal total, Decimal iva);
/// VAT and total of a typed net amount.
[[nodiscard]] MontosFactura montos_del_neto(const std::string& neto);
/// Quantity × price, formatted.
[[nodiscard]] std::string total_linea(const std::string& cantidad, const std::string& precio);

/// How the lines stand to the net amount, in a few words for the person who types them.
[[nodiscard]] std::string cuadre_factura(const std::vector<LineaFactura>& lineas, const std::string& neto);

/// The voucher's saved invoice (its amounts are empty: the form shows the voucher's). @throws ErrorSesion
[[nodiscard]] std::optional<Factura> leer_factura(clsConexion& db, const Clave& clave);
/// The customer with this RUT, written with or without points; nothing for an empty one.
[[nodiscard]] std::optional<Cliente> buscar_cliente(clsConexion& db, const std::string& ruc);
/// The checks before saving in their order. @param editando a cell edit is open or a row is being added
[[nodiscard]] std::optional<Rechazo> ValidarFactura(const Factura& f, bool editando);
/// Customer, invoice and lines in one transaction.
[[nodiscard]] Desenlace GrabarFactura(clsConexion& db, const Clave& clave, const Factura& f);
/// Fills the invoice's staging table. @throws std::runtime_error, ErrorSesion
void preparar_factura(clsConexion& reporte, const Factura& f);

} // namespace quorvel
