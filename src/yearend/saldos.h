#pragma once
#include "text/numeros.h"
#include "yearend/asiento.h"

namespace quorvel {

/// The accounts of the balance sheet, or those of the result. A set instead of a join with chart and groups:
/// the engines then pass over the year's lines once and not once for every group.
inline constexpr const char* CUENTAS_BALANCE =
    " and a.centro in (select b.centro from ctmcentros b, ctmgcuenta c where b.g_cuenta=c.g_cuenta and "
    "c.transitorio='0')";
inline constexpr const char* CUENTAS_RESULTADO =
    " and a.centro in (select b.centro from ctmcentros b, ctmgcuenta c where b.g_cuenta=c.g_cuenta and "
    "c.transitorio='1')";

/// One row of a sum per account.
struct Saldo {
    std::string centro, auxiliar, ref;
    Decimal debe, haber;
};
/// Reads rows one by one, without keeping them. @return false when cancelled
[[nodiscard]] bool recorrer_saldos(clsConexion& db, const std::string& sql, const Avance& avance,
                                   const std::function<void(const Saldo&)>& fila);

/// Collects generated lines and their exact totals.
class ArmadorAsiento {
public:
    explicit ArmadorAsiento(const std::string& glosa);
    /// Adds the amounts to the totals and, when wanted, the line; the counter goes up in any case.
    void poner(const Saldo& s, bool con_linea);
    [[nodiscard]] Decimal debe() const { return debe_; }
    [[nodiscard]] Decimal haber() const { return haber_; }
    /// @param desde totals of the lines that are there already
    [[nodiscard]] AsientoGenerado terminar(Decimal desde_debe, Decimal desde_haber);

private:
    std::string glosa_;
    int contador_ = 0;
    Decimal debe_, haber_;
    AsientoGenerado asiento_;
};

/// The refusal of a result that has no account to go to; nothing when it has one.
[[nodiscard]] std::optional<Rechazo> sin_cuenta_resultado(const std::string& cuenta, bool perdida);

} // namespace quorvel
