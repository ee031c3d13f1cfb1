#pragma once
#include <string>
#include <vector>

namespace quorvel::apoyo {

/// A text on its way into a box (column -1) or a cell of a line that holds account 103001, auxiliary 000012
/// and a debit of 700: what is there once it has been left, letter by letter and as a whole.
struct Via {
    const char* control;
    int columna;
    const char *texto, *tecleado, *entero;
    const char *dice_tecleado = "", *dice_entero = "";
};

inline const std::vector<Via>& vias() {
    constexpr const char* GRILLA = "grdDetalle";
    constexpr const char *CUENTA = "Cuenta no válida", *AUXILIAR = "Auxiliar no válida",
                         *MONTO = "Monto no válido", *CENTRO = "Centro no válida",
                         *IMPUESTO = "Codigo de impuesto no válido", *TASA = "Tasa no válida",
                         *FECHA = "Fecha no válida";
    static const std::vector<Via> todas{
        {GRILLA, 1, "1.01.001", "101001", "101001"},
        {GRILLA, 1, "10A1001", "101001", "103001", "", CUENTA},
        {GRILLA, 1, "101009", "103001", "103001", CUENTA, CUENTA},
        {GRILLA, 2, "13", "000013", "000013"},
        {GRILLA, 2, "1x3", "000013", "000012", "", AUXILIAR},
        {GRILLA, 3, "-500", "500", "700", "", MONTO},
        {GRILLA, 3, "1000+500", "1.500", "1.500"},
        {GRILLA, 3, "2.000-500+", "1.500", "1.500"},
        {GRILLA, 3, "500-2000", "700", "700", MONTO, MONTO},
        {GRILLA, 3, "1.500,50", "150.050", "700", "", MONTO},
        {GRILLA, 3, "1.5", "15", "700", "", MONTO},
        {GRILLA, 3, "$ 1.500,00", "150.000", "1.500"},
        {GRILLA, 3, "10\n20", "1.020", "700", "", MONTO},
        {GRILLA, 4, "S/N", "", "", "", MONTO},
        {GRILLA, 4, "1234567890123456789", "", "", MONTO, MONTO},
        {GRILLA, 5, "año ñ", "AÑO Ñ", "AÑO Ñ"},
        {GRILLA, 6, "1x", "", "", CENTRO, CENTRO},
        {GRILLA, 7, "sn", "N", "", "", "Conciliado se marca con S o N"},
        {GRILLA, 8, "A9-9", "99", "", "", "Doc.Pagado lleva solo dígitos"},
        {GRILLA, 9, "024x", "024", "", "", IMPUESTO},
        {GRILLA, 10, "31,5 %", "31,5", "31,5"},
        {GRILLA, 10, "1/2-3", "", "", TASA, TASA},
        {"mskF_comp", -1, "0302", "03/02/2024", "03/02/2024"},
        {"mskF_comp", -1, "3/2", "03/02/2024", "03/02/2024"},
        {"mskF_comp", -1, "030223", "03/02/2023", "03/02/2023"},
        {"mskF_comp", -1, "3.2.2023", "322023", "03/02/2023"},
        {"mskF_comp", -1, "2023-02-03", "03/02/2023", "03/02/2023"},
        {"mskF_comp", -1, "hola 5", "5", "15/06/2024", "", FECHA},
        {"txtfecha_doc", -1, "31/02", "31/02", "31/02", FECHA, FECHA},
        {"txtconcepto", -1, "a\tñ", "a ñ", "a ñ"},
    };
    return todas;
}

} // namespace quorvel::apoyo
