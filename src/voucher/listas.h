#pragma once
#include <array>

namespace quorvel {

// Fixed list texts; the text is the stored key, character for character.
inline constexpr std::array NORMAS{"0 TRIBUTARIA / IFRS", "1 TRIBUTARIA", "2 IFRS"};
inline constexpr std::array NO_RECUPERABLES{"",
                                            "1 Compras Generan Op. Exentas",
                                            "2 Facturas fuera de plazo legal",
                                            "3 Gastos no producen renta",
                                            "4 Entregas Gratuitas recibidas",
                                            "9 Otros"};
inline constexpr std::array ESTADOS{"P Procesado", "T Temporal", "X Anulado"};
inline constexpr const char* NINGUNO = "(Ninguno)";
inline constexpr const char* TODOS = "(Todos)";
inline constexpr const char* CONSULTA_DOCUMENTOS =
    "SELECT a.* from admdocumen a, adxdoc_sub b where b.subsistema='01' and a.documento=b.documento"
    " order by a.documento";
inline constexpr const char* CONSULTA_MONEDAS = "select * from admmonedas ";

} // namespace quorvel
