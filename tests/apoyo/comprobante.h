#pragma once
#include "apoyo/empresa.h"
#include "voucher/comprobante.h"

namespace quorvel::apoyo {

constexpr Fecha fecha(int anio, unsigned mes, unsigned dia) {
    return {std::chrono::year(anio), std::chrono::month(mes), std::chrono::day(dia)};
}
constexpr Fecha HOY = fecha(2024, 6, 15);

/// A purchase of 119.000 that may be saved into the small company: three lines, account 501002 first.
inline Comprobante compra(const std::string& numero = "1") {
    Comprobante c;
    c.empresa = 1;
    c.f_comp = fecha(2024, 3, 20);
    c.documento = "002";
    c.num_docum = numero;
    c.moneda = "PS";
    c.concepto = "Compra de materiales";
    c.usuario = 1;
    c.libro = "COMPRAS";
    c.doc_libro = "FACTURA";
    c.num_ref = "9" + numero;
    c.fecha_factura = fecha(2024, 3, 20);
    c.rut_persona = "76.418.352-5";
    c.nombre = "FERRETERIA EL ROBLE SPA";
    c.monto_neto = 100000;
    c.nro_correlativo = 1;
    c.totales = {119000, 119000};
    c.lineas = {{"501002", "", 100000, {}, "compra"},
                {"109001", "", 19000, {}, "iva", "", "S"},
                {"201001", "000013", {}, 119000, "factura", "101001", "", "9", "024", "31,50"}};
    return c;
}

} // namespace quorvel::apoyo
