// Texts that come into a cell as a whole: pasted, dropped, composed. Letter by letter they would lose what
// makes another amount or code of them: a sign, a decimal mark, a letter.
#include "screen/detalle/detalle.h"
#include "screen/detalle/nombres_codigos.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"
#include "text/suma.h"

#include <algorithm>

namespace quorvel {

namespace {

using Texto = std::optional<std::string>;

Texto digitos(const std::string& t) {
    const bool todos = std::ranges::all_of(t, [](char c) { return c >= '0' && c <= '9'; });
    return todos ? Texto(t) : std::nullopt;
}

/// "1.01.001" and "1-01-001" are ways to write 101001.
Texto codigo(const std::string& t) { return digitos(reemplazar(reemplazar(t, ".", ""), "-", "")); }

Texto monto(const std::string& t) {
    const std::string cifra = recortar(t.starts_with('$') ? t.substr(1) : t);
    const auto valor = monto_de_linea(cifra);
    if (!valor) return std::nullopt;
    const bool suma = cifra.find_first_of("+-") != std::string::npos;
    return suma ? cifra : valor->formato("0");
}

Texto marca(const std::string& t) {
    const std::string m = mayusculas(t);
    return m == "S" || m == "N" ? Texto(m) : std::nullopt;
}

Texto tasa(const std::string& t) {
    const std::string cifra = recortar(t.ends_with('%') ? t.substr(0, t.size() - 1) : t);
    return tasa_valida(cifra) ? Texto(cifra) : std::nullopt;
}

struct Regla {
    Texto (*lee)(const std::string&); ///< null: letter by letter
    const char* mensaje;
};
constexpr Regla REGLAS[COLUMNAS] = {
    {nullptr, ""},
    {codigo, "Cuenta no válida"},
    {codigo, "Auxiliar no válida"},
    {monto, "Monto no válido"},
    {monto, "Monto no válido"},
    {nullptr, ""},
    {codigo, "Centro no válida"},
    {marca, "Conciliado se marca con S o N"},
    {digitos, "Doc.Pagado lleva solo dígitos"},
    {codigo, "Codigo de impuesto no válido"},
    {tasa, "Tasa no válida"},
};

/// Letters look for a code by its name; what is typed then is a text like any other.
bool busca_por_nombre(const frmQuorvel& f, int columna, const ui::Entry& e) {
    return f.nombres && NombresCodigos::se_busca(columna) && ui::has_letter(e.whole());
}

void texto_tecleado(int columna, ui::Entry& e) {
    const bool monto = columna == DEBE || columna == HABER;
    const bool tras_cifra = !e.front.empty() && e.front.back() >= '0' && e.front.back() <= '9';
    if (monto && tras_cifra && (e.text == "+" || e.text == "-")) e.settled = true;
    if (columna == CONCILIADO) e.front = e.back = "";
}

} // namespace

Texto texto_aceptado(int columna, const std::string& texto) {
    return REGLAS[columna].lee(recortar(reemplazar(texto, "\u00A0", " ")));
}

void texto_entra(frmQuorvel& f, ui::Entry& e) {
    const int columna = f.grdDetalle.Col();
    if (e.typed && busca_por_nombre(f, columna, e)) {
        e.text = mayusculas(e.text);
        e.settled = true;
        return;
    }
    if (e.typed) return texto_tecleado(columna, e);
    if (REGLAS[columna].lee == nullptr) return;
    const auto texto = texto_aceptado(columna, e.whole());
    e.settled = true;
    e.refused = !texto;
    if (!texto) return f.critico(REGLAS[columna].mensaje);
    e = {"", *texto, "", false, false, true};
}

} // namespace quorvel
