#pragma once
#include <string>
#include <vector>

namespace quorvel::apoyo {

// The ways into and out of the assistants' dialogs: one table for the window and for the driver.

/// A text that its box does not let go, and what is told then. @param antes account that opens the box, typed
/// into the control named before "="
struct TextoMalo {
    const char *libro, *documento, *antes, *control, *texto, *mensaje;
};
inline constexpr TextoMalo TEXTOS_MALOS[] = {
    {"VENTAS", "FACTURA", "", "txtCuenta", "999999", "Cuenta no válida"},
    {"VENTAS", "FACTURA", "", "txtNeto", "150.00", "Monto no válido"},
    {"COMPRAS", "FACTURA", "txtCuenta=103001", "txtauxiliar", "99", "Auxiliar no válido"},
    {"COMPRAS", "FACTURA", "", "txtExento", "1,234,567", "Monto no válido"},
    {"COMPRAS", "FACTURA", "", "txttasa_impuesto_otro", "19,5%", "Tasa no válida"},
    {"COMPRAS", "FACTURA", "", "txtotro", "5-", "Monto no válido"},
    {"RETENCIONES", "BOLETA", "", "txtNeto", "12x4", "Monto no válido"},
    {"INGRESOS", "INGRESO", "", "txtExento", "1.5", "Monto no válido"},
    {"EGRESOS", "EGRESO", "", "txttotal", "abc", "Monto no válido"},
    {"RET. SOCIO", "EGRESO", "", "txtCuenta", "501009", "Cuenta no válida"},
    {"RET. SOCIO", "EGRESO", "", "txtCuenta2", "7", "Cuenta no válida"},
    {"RET. SOCIO", "EGRESO", "txtCuenta2=303001", "txtAuxiliar2", "x", "Auxiliar no válido"},
    {"RET. SOCIO", "EGRESO", "", "txttotal", "1000000000000000", "Monto no válido"},
};

/// A key, or a control that is clicked. What checks is refused with one message and does nothing else; what
/// does not check ends the dialog without a word.
struct Salida {
    const char *tecla, *control;
    bool revisa;
};
inline constexpr Salida SALIDAS[] = {
    {"f5", "", true},        {"enter", "", true},   {"tab", "", true},          {"", "cmdaceptar", true},
    {"", "cmdGenera", true}, {"escape", "", false}, {"", "cmdcancelar", false},
};

/// A document from the opened dialog to its lines, by keys alone and by clicks alone. Keys: "<enter>" or
/// characters. Clicks: a control, or a box and what is pasted into it; the first lookup row is CAJA.
struct Recorrido {
    const char *libro, *documento, *teclas, *por_teclas, *clics, *por_clics;
};
inline constexpr Recorrido RECORRIDOS[] = {
    {"VENTAS", "FACTURA", "<enter>401001<enter><enter>100000<enter><enter>119000<enter><enter>",
     "401001||0|100.000;203001||0|19.000;103001|000012|119.000|0",
     "cmdCuenta|txttotal=119000|cmdiva|cmdaceptar",
     "101001||0|100.000;203001||0|19.000;103001|000012|119.000|0"},
    {"COMPRAS", "FACTURA", "<enter>501002<enter><enter>150<enter><enter>179<enter><enter>",
     "501002||150|0;109001||29|0;201001|000012|0|179", "cmdCuenta|txtNeto=150|txtExento=9|cmdaceptar",
     "101001||159|0;109001||29|0;201001|000012|0|188"},
    {"RETENCIONES", "BOLETA", "<enter>501001<enter><enter><enter><enter>100000<enter><enter>",
     "501001||100.000|0;204002||0|13.750;204001|000012|0|86.250", "cmdCuenta|txtNeto=86250|cmdaceptar",
     "101001||100.000|0;204002||0|13.750;204001|000012|0|86.250"},
    {"INGRESOS", "INGRESO", "<enter>101002<enter><enter>5000<enter><enter> <enter><enter>",
     "101002||5.000|0;103001|000012|0|5.000", "cmdCuenta|txttotal=700|cmdaceptar",
     "101001||0|700;103001|000012|700|0"},
    {"EGRESOS", "EGRESO", "<enter>101002<enter><enter><enter>700<enter> <enter><enter>",
     "101002||0|700;201001|000012|700|0", "cmdCuenta|txtExento=700|cmdaceptar",
     "101001||700|0;201001|000012|0|700"},
    {"RET. SOCIO", "EGRESO", "<enter>101002<enter>303001<enter>14<enter><enter>500000<enter><enter>",
     "101002||500.000|0;303001|000014|0|500.000", "cmdCuenta|cmdcuenta2|txttotal=500000|cmdaceptar",
     "101001||500.000|0;101001||0|500.000"},
};

/// The pieces of "a|b|c".
inline std::vector<std::string> piezas(const std::string& texto) {
    std::vector<std::string> p{""};
    for (const char c : texto) {
        if (c == '|')
            p.emplace_back();
        else
            p.back() += c;
    }
    return p;
}
/// "<enter>5" as keys: "enter", "5".
inline std::vector<std::string> en_teclas(const std::string& guion) {
    std::vector<std::string> t;
    for (std::size_t i = 0; i < guion.size(); ++i) {
        const std::size_t fin = guion[i] == '<' ? guion.find('>', i) : i;
        t.push_back(fin == i ? guion.substr(i, 1) : guion.substr(i + 1, fin - i - 1));
        i = fin;
    }
    return t;
}

} // namespace quorvel::apoyo
