#pragma once
#include "platform/db/clsConexion.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace quorvel::fallas {

/// A line as grid and table hold it: account, auxiliary, debit, credit.
struct LineaPlana {
    std::string cuenta, auxiliar;
    std::int64_t debe = 0, haber = 0;
    friend auto operator<=>(const LineaPlana&, const LineaPlana&) = default;
};
/// Date (yyyy-mm-dd), kind, number.
using ClavePlana = std::tuple<std::string, std::string, std::string>;
/// What a voucher says.
struct ContenidoPlano {
    std::string concepto, norma = "0";
    bool apertura = false;
    std::vector<LineaPlana> lineas;
    std::vector<std::string> adjuntos;
    friend bool operator==(const ContenidoPlano&, const ContenidoPlano&) = default;
};
struct ComprobantePlano : ContenidoPlano {
    std::string estado = "P", cheque, interno; ///< interno: set and correlative, which the program chooses
    int usuario = 0, bloqueo = 0;
    std::int64_t total = 0;
    /// No edit of the voucher tells one from the other.
    [[nodiscard]] bool igual(const ComprobantePlano& c) const {
        return static_cast<const ContenidoPlano&>(*this) == c && estado == c.estado && interno == c.interno &&
               usuario == c.usuario && total == c.total;
    }
};

/// The open year, as the company has it or as a window still believes.
struct PeriodoPlano {
    int anio = 2024;
    std::optional<ClavePlana> cierre; ///< recorded, perhaps deleted since
};

/// The plain model of the company: maps and rules, no database.
class Modelo {
public:
    std::map<ClavePlana, ComprobantePlano> comprobantes;
    std::map<std::string, std::string> ultimo_emitido{{"001", "0"}, {"002", "0"}};
    PeriodoPlano periodo;
    std::int64_t saldo_caja = 0; ///< what annulments have taken from 101001 in June 2024

    void desbloquear(int usuario);
    void bloquear(const ClavePlana& clave, int usuario);
    [[nodiscard]] std::int64_t propuesto(const std::string& documento, const std::string& anio) const;
    [[nodiscard]] bool vigente(const ClavePlana& clave) const; ///< stored and not annulled
    /// Why a voucher of this key cannot be saved in the period; empty when it can.
    [[nodiscard]] std::string fuera(const PeriodoPlano& p, const ClavePlana& clave) const;
    [[nodiscard]] bool tiene_movimientos(int anio) const;
    [[nodiscard]] bool resultados_en_cero() const;
    /// The lines that a closing must have now, by account.
    [[nodiscard]] std::vector<LineaPlana> cierre() const;
    /// The lines that an opening of the year must have.
    [[nodiscard]] std::vector<LineaPlana> apertura(int anio, const std::string& norma) const;
    /// What the checker must say of each opening that is no longer what the year before left.
    [[nodiscard]] std::set<std::string> aperturas_distintas() const;
    /// All of it, as leer() reads it from the database.
    [[nodiscard]] std::string texto() const;
    [[nodiscard]] static std::string leer(clsConexion& db);

private:
    /// Debit less credit by account and auxiliary.
    using Saldos = std::map<std::pair<std::string, std::string>, std::int64_t>;
    /// Of a year's balance-sheet accounts but the result's own.
    [[nodiscard]] Saldos saldos(int anio, const std::string& norma) const;
    [[nodiscard]] static LineaPlana linea(const Saldos::key_type& cuenta, std::int64_t saldo);
};

} // namespace quorvel::fallas
