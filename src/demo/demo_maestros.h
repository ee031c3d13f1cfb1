#pragma once
#include <map>
#include <string>
#include <vector>

namespace quorvel::dbtools {
class Base;
}
namespace quorvel::demo {

struct AuxiliarDemo {
    std::string codigo, tipo, rut, nombre;
};
/// A purchase that returns every month.
struct GastoDemo {
    std::string proveedor, cuenta, centro2;
    int minimo = 0, maximo = 0;
    std::string impuesto;
    int veces = 1;
    std::string glosa;
};
struct MaestrosDemo {
    std::vector<AuxiliarDemo> auxiliares;
    std::vector<GastoDemo> gastos;
    std::map<std::string, std::string> tasas;       ///< other tax → rate
    std::map<std::string, std::string> transitorio; ///< account group → "1" for results
    [[nodiscard]] std::vector<AuxiliarDemo> de_tipo(const std::string& tipo) const;
    [[nodiscard]] const AuxiliarDemo& auxiliar(const std::string& codigo) const;
};

/// Writes the masters of the data folder (chart, cost centres, auxiliaries, codes, the company, its users).
[[nodiscard]] MaestrosDemo sembrar_maestros(dbtools::Base& base);

} // namespace quorvel::demo
