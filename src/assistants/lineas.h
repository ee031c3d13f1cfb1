#pragma once
#include "voucher/comprobante.h"
#include "voucher/configuracion.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

using CuentaConfig = std::string Configuracion::*;

/// A configured party account and the flag that says whether its line carries an auxiliary.
struct Contraparte {
    CuentaConfig cuenta = nullptr, requiere = nullptr;
};

enum class Lado : std::uint8_t { debe, haber };

/// What tells the four books apart when a document becomes lines.
struct Variante {
    int libro;
    std::string_view titulo;                       ///< caption of the dialog
    Lado principal;                                ///< side of the main line before any exchange
    CuentaConfig iva;                              ///< nullptr: two lines carry the total
    CuentaConfig otros;                            ///< account of the other tax
    Contraparte factura, boleta;                   ///< who owes or is owed
    bool (*es_boleta)(std::string_view) = nullptr; ///< kinds that go to the receipts account
    bool iva_en_boleta = false;                    ///< sales keep the VAT line for receipts, purchases do not
};
/// Sales, purchases, income, egress. @param libro VENTAS, COMPRAS, INGRESOS or EGRESOS
[[nodiscard]] const Variante& variante(int libro);

/// What an accepted dialog leaves.
struct DocumentoTributario {
    std::string documento, cuenta, auxiliar;
    std::string aux_contraparte; ///< dropped where the account requires none
    Decimal total, iva, otro;
    bool trasponer = false; ///< income and egress: sides exchanged
};

/// Side of the line of the dialog's own account.
[[nodiscard]] bool principal_al_debe(const Variante& v, const DocumentoTributario& d);
/// Whether an amount of these lines would need a sign: debit and credit have none.
[[nodiscard]] bool con_monto_negativo(const std::vector<Linea>& lineas);
/// Two to four lines. A credit note exchanges the sides. Nothing is
/// balanced here: a total that is not the sum of its parts goes into the main line.
[[nodiscard]] std::vector<Linea> lineas_documento(const Variante& v, const DocumentoTributario& d,
                                                  const Configuracion& k, const std::string& concepto);
/// Gross fee, retained tax (d.iva), liquid fee.
[[nodiscard]] std::vector<Linea> lineas_retencion(const DocumentoTributario& d, const Configuracion& k,
                                                  const std::string& concepto);

struct RetiroSocio {
    std::string banco, aux_banco, socio, aux_socio;
    Decimal total;
};
[[nodiscard]] std::vector<Linea> lineas_retiro_socio(const RetiroSocio& r, const std::string& concepto);

} // namespace quorvel
