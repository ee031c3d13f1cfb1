#pragma once
#include "text/fecha.h"
#include "text/numeros.h"
#include "voucher/campo.h"

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
/// "documento 001, Nro.15, 20/03/2024", within a sentence to the user.
[[nodiscard]] std::string nombrar(const Clave& k);

inline constexpr std::size_t LARGO_GLOSA = 60; ///< letters of a line's gloss that are stored

/// One line. An amount that was not given is 0 in every sum.
struct Linea {
    std::string centro, auxiliar;
    std::optional<Decimal> debe{}, haber{};
    std::string glosa{}, centro2{}, conciliado{}, num_ref{}, codigo_otro_impuesto{};
    std::string tasa_impuesto_otro{}; ///< as typed, with "," on the screen
    friend bool operator==(const Linea&, const Linea&) = default;
};

/// Both sides of a voucher.
struct Totales {
    Decimal debe, haber;
    /// Whole pesos, as they are shown.
    [[nodiscard]] Totales redondeados() const { return {debe.redondeado(), haber.redondeado()}; }
    friend bool operator==(const Totales&, const Totales&) = default;
};
/// The exact sums.
[[nodiscard]] Totales totales_de(const std::vector<Linea>& lineas);

/// A voucher. Codes and the texts of lists are kept as they are stored, unknown ones too.
struct Comprobante {
    int empresa = 0;
    std::string subsistema = "01"; ///< two characters
    std::optional<Fecha> f_comp;
    std::string documento; ///< three-character code; "" when none is chosen
    std::string num_docum;
    std::string moneda; ///< two-character code
    std::string concepto;
    int usuario = 0;
    Decimal cotizacion = 1;
    std::string estado; ///< "", "P", "T", "X"
    std::string libro, doc_libro = " ", num_ref;
    std::optional<Fecha> fecha_factura, fecha_pago;
    std::string rut_persona, nombre;
    bool apertura = false;
    Decimal monto_neto, monto_exento;
    std::string codigo_otro_impuesto;
    std::string tasa_impuesto_otro; ///< as typed, with "," on the screen
    bool activo_fijo = false;
    std::string codigo_no_recuperable, ifrs = "0";
    std::int64_t comprobante_adjunto = 0; ///< attachment set, 0 none
    std::int64_t nro_correlativo = 0;
    std::int64_t iva_activo_fijo = 0; ///< pesos
    Totales totales;                  ///< of the header, which need not be the sums of the lines
    Campo ilegible = Campo::ninguno;  ///< an amount whose text is no number, so that it cannot be saved
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
