#pragma once
#include <string>

namespace quorvel::bench {

/// A database of its own with the tests' small company and one saved voucher of so many lines, the only one
/// that a search finds. @return its connection text
[[nodiscard]] std::string base_con_comprobante(int lineas);

/// Adds active accounts and auxiliaries to a company. @param conexion of either engine
void agrandar_maestros(const std::string& conexion, int cuentas, int auxiliares);

} // namespace quorvel::bench
