#pragma once
#include "text/fecha.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvel {

/// Identity of a saved voucher.
struct Clave {
    int empresa = 0;
    std::string subsistema = "01";
    Fecha f_comp{};
    std::string documento, num_docum;
    friend bool operator==(const Clave&, const Clave&) = default;
};

/// One line as its grid cells show it: amounts are displayed texts ("1.234.567", empty is 0).
struct Linea {
    std::string centro, auxiliar, debe, haber, glosa, centro2, conciliado, num_ref, codigo_otro_impuesto,
        tasa_impuesto_otro;
};

/// A voucher as the screen holds it. Amount fields are displayed texts in the Chilean form.
struct Comprobante {
    int empresa = 0;
    std::string subsistema = "01"; ///< two characters
    std::optional<Fecha> f_comp;
    std::string documento; ///< three-character code; "" when none is chosen
    std::string num_docum;
    std::string moneda; ///< two-character code
    std::string concepto;
    int usuario = 0;
    std::string cotizacion = "1"; ///< displayed text; as loaded with all its decimals
    std::string estado;           ///< "", "P", "T", "X"
    std::string libro, doc_libro = " ", num_ref;
    std::optional<Fecha> fecha_factura, fecha_pago;
    std::string rut_persona, nombre;
    int apertura = 0;
    double monto_neto = 0, monto_exento = 0;
    std::string codigo_otro_impuesto, tasa_impuesto_otro; ///< rate with "," on the screen
    int activo_fijo = 0;
    std::string codigo_no_recuperable, ifrs = "0";
    std::string comprobante_adjunto; ///< digits of the attachment set, "" or "0" none
    std::string nro_correlativo, iva_activo_fijo;
    std::string total_debe, total_haber; ///< displayed totals
    std::optional<Fecha> f_ult_modificacion;
    std::int64_t bloqueo_usuario = 0;
    std::vector<Linea> lineas;
    std::vector<std::string> adjuntos; ///< bare file names in list order
    // Carried through a cut, so that a changed key keeps its cheque.
    struct Cheque {
        std::string cheque, banco, cuenta, beneficiario;
        std::optional<Fecha> fecha;
        int nominativo = 0, cruzado = 0;
        friend bool operator==(const Cheque&, const Cheque&) = default;
    };
    std::optional<Cheque> cheque;

    [[nodiscard]] Clave clave() const {
        return {empresa, subsistema, f_comp.value_or(Fecha{}), documento, num_docum};
    }
};

} // namespace quorvel
