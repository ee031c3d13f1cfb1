#pragma once
#include "text/fecha.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace quorvel::dbtools {
class Base;
}
namespace quorvel::demo {

/// One line and one voucher of the demonstration company, before they have numbers.
struct LineaDemo {
    std::string centro;
    std::int64_t debe = 0, haber = 0;
    std::string auxiliar, num_ref, centro2, conciliado, codigo_impuesto, tasa_impuesto;
};
struct ChequeDemo {
    std::string numero, beneficiario;
};
struct AsientoDemo {
    Fecha fecha;
    std::string documento, libro, doc_libro, num_ref, rut, nombre, concepto;
    std::vector<LineaDemo> lineas;
    std::optional<Fecha> fecha_pago; ///< with one the voucher has a dated book document
    std::int64_t neto = 0, exento = 0, iva_activo_fijo = 0;
    std::string codigo_impuesto, tasa_impuesto;
    std::string subsistema = "01", estado = "P", ifrs = "0";
    bool apertura = false, activo_fijo = false;
    std::optional<ChequeDemo> cheque;
};

/// Numbers and writes vouchers as the screen would and keeps what they add up to.
class DiarioDemo {
public:
    /// Account, auxiliary and referenced document; what is open on each.
    using Clave = std::tuple<std::string, std::string, std::string>;
    explicit DiarioDemo(dbtools::Base& base) : base_(base) {}
    /// @return the number given to the voucher
    std::string asentar(const AsientoDemo& asiento, int usuario);
    /// Debit less credit of everything written so far.
    [[nodiscard]] std::int64_t saldo(const std::string& centro) const;
    [[nodiscard]] const std::map<Clave, std::int64_t>& saldos() const { return saldos_; }
    /// Hands the balances over and starts from nothing: an opening voucher brings them into the new year.
    [[nodiscard]] std::map<Clave, std::int64_t> cerrar_libro() { return std::exchange(saldos_, {}); }
    /// Highest number of each document kind in a year.
    [[nodiscard]] std::map<std::string, int> ultimos(int anio) const;
    /// Writes the monthly balances of all levels of the chart and whatever still waits to be written.
    void terminar();

private:
    using Meses = std::array<std::int64_t, 24>; ///< debe1, haber1, debe2 …
    void acumular(const AsientoDemo& asiento, const LineaDemo& linea);
    void escribir_cabecera(const AsientoDemo& a, const std::string& numero, int correlativo, int usuario);
    void escribir_linea(const AsientoDemo& a, const std::string& numero, int secuencia, const LineaDemo& l);
    dbtools::Base& base_;
    std::map<std::pair<int, std::string>, int> numeros_;            // year, document kind
    std::map<std::tuple<int, int, std::string>, int> correlativos_; // year, month, book
    std::map<Clave, std::int64_t> saldos_;
    std::map<std::pair<int, std::string>, Meses> por_centro_; // year, account of any level
    std::map<std::tuple<int, std::string, std::string>, Meses> por_auxiliar_;
    int adjuntos_ = 0;
};

} // namespace quorvel::demo
