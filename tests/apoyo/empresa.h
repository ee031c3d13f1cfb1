#pragma once
#include "apoyo/sesiones.h"
#include "platform/db/clsConexion.h"

#include <memory>

namespace quorvel {

/// A small company 1 with the year 2024 open, on a database that has its tables and nothing else. No
/// vouchers. Chart: 101001 CAJA, 101002 BANCO, 103001 CLIENTES (aux), 103002 BOLETAS POR COBRAR, 109001 IVA
/// CREDITO, 109002 OTROS IMP. COMPRA, 201001 PROVEEDORES (aux), 201002 BOLETAS POR PAGAR, 203001 IVA DEBITO,
/// 203002 OTROS IMP. VENTA, 204001 HONORARIOS POR PAGAR (aux), 204002 RETENCION 2DA CATEGORIA, 301001
/// CAPITAL, 302001 UTILIDAD, 302002 PERDIDA, 303001 RETIROS SOCIOS (aux), 401001 VENTAS, 501001 GASTOS
/// GENERALES, 501002 COMPRAS; 501009 GASTO DISCONTINUADO is inactive. Auxiliaries: 000012 CL 12.345.678-5,
/// 000013 PR 76.418.352-5, 000014 PS 11.111.111-1; 000099 is inactive. Documents of accounting: 001 TRASPASO,
/// 002 COMPRA. Persons and users 1 and 2.
/// @throws std::runtime_error naming the refused statement
void sembrar_empresa(clsConexion& db);

namespace apoyo {
/// A session on a database of its own with the tables and no rows.
[[nodiscard]] std::unique_ptr<clsConexion> crear_base(Motor motor);
/// Connection text of a database of its own with the small company: a copy of one that is made once.
[[nodiscard]] std::string conexion_empresa(Motor motor);
/// A session on such a database.
[[nodiscard]] std::unique_ptr<clsConexion> crear_empresa(Motor motor);
} // namespace apoyo

} // namespace quorvel
