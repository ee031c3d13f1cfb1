#include "voucher/diferencia.h"

#include "text/numeros.h"
#include "voucher/iva.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <numeric>
#include <set>

namespace quorvel {

namespace {

/// An amount of the voucher and what it would have to be for the voucher to balance.
struct Celda {
    std::size_t linea;
    bool debe;
    std::int64_t monto, correcto;
    std::int64_t diferencia; ///< of the voucher, debits minus credits
    /// The amount is on the side that has too much.
    [[nodiscard]] bool sobra() const { return debe == (diferencia > 0); }
};

std::string pesos(std::int64_t n) { return formato(static_cast<double>(n), "#,##0"); }
std::int64_t monto(const std::optional<Decimal>& m) { return m ? m->pesos() : 0; }
std::string lado(bool debe) { return debe ? "Debe" : "Haber"; }

bool sin_contrapartida(const Celda& c) { return c.sobra() && c.monto == std::abs(c.diferencia); }
bool falta_repetir(const Celda& c) { return !c.sobra() && c.monto == std::abs(c.diferencia); }
bool lado_equivocado(const Celda& c) { return c.sobra() && 2 * c.monto == std::abs(c.diferencia); }

bool cifras_cambiadas(const Celda& c) {
    const std::string a = std::to_string(c.monto), b = std::to_string(c.correcto);
    if (c.correcto <= 0 || !std::ranges::is_permutation(a, b)) return false;
    return std::inner_product(a.begin(), a.end(), b.begin(), 0, std::plus(), std::not_equal_to()) == 2;
}

bool cero_de_mas(const Celda& c) { return c.correcto > 0 && c.monto == 10 * c.correcto; }
bool cero_de_menos(const Celda& c) { return c.correcto == 10 * c.monto; }
bool falta_iva(const Celda& c) { return c.sobra() && iva_en_pesos(c.monto) == std::abs(c.diferencia); }
bool sin_iva(const Celda& c) { return !c.sobra() && iva_en_pesos(c.monto) == std::abs(c.diferencia); }
bool incluye_iva(const Celda& c) {
    return c.sobra() && c.correcto > 0 && c.correcto + iva_en_pesos(c.correcto) == c.monto;
}

struct Causa {
    bool (*es)(const Celda&);
    std::string (*texto)(const Celda&);
};
/// The likeliest first.
constexpr Causa CAUSAS[] = {
    {sin_contrapartida,
     [](const Celda& c) {
         return "el monto es igual a la diferencia: sobra, o falta su contrapartida en el " + lado(!c.debe);
     }},
    {lado_equivocado,
     [](const Celda& c) {
         return "el monto es la mitad de la diferencia: debería estar en el " + lado(!c.debe);
     }},
    {cifras_cambiadas,
     [](const Celda& c) { return "dos cifras cambiadas: cuadra con " + pesos(c.correcto); }},
    {cero_de_mas, [](const Celda& c) { return "un cero de más: cuadra con " + pesos(c.correcto); }},
    {cero_de_menos, [](const Celda& c) { return "un cero de menos: cuadra con " + pesos(c.correcto); }},
    {falta_iva,
     [](const Celda& c) {
         return "la diferencia es el 19 % del monto: falta su IVA en el " + lado(!c.debe) +
                ", o sobra en el " + lado(c.debe);
     }},
    {sin_iva,
     [](const Celda& c) {
         return "la diferencia es el 19 % del monto: falta su IVA en el " + lado(c.debe) + "; con IVA es " +
                pesos(c.correcto);
     }},
    {incluye_iva, [](const Celda& c) { return "el monto incluye el IVA: el neto es " + pesos(c.correcto); }},
    {falta_repetir,
     [](const Celda& c) {
         return "el monto es igual a la diferencia: falta otra vez en el " + lado(c.debe);
     }},
};

std::vector<Celda> celdas_de(const std::vector<Linea>& lineas, std::int64_t diferencia) {
    std::vector<Celda> celdas;
    for (std::size_t i = 0; i < lineas.size(); ++i)
        for (const bool debe : {true, false}) {
            const std::int64_t n = monto(debe ? lineas[i].debe : lineas[i].haber);
            if (n != 0) celdas.push_back({i, debe, n, debe ? n - diferencia : n + diferencia, diferencia});
        }
    return celdas;
}

std::string nombrar(const Celda& c) {
    return "Línea " + std::to_string(c.linea + 1) + ", " + lado(c.debe) + " " + pesos(c.monto) + ": ";
}

/// One peso comes from rounding: the VAT that is one off, else the last amount.
CausaDiferencia de_redondeo(const std::vector<Celda>& celdas) {
    std::set<std::int64_t> ivas;
    for (const Celda& c : celdas) ivas.insert(iva_en_pesos(c.monto));
    auto hallada = std::find_if(celdas.begin(), celdas.end(), [&](const Celda& c) {
        return ivas.contains(c.correcto) && !ivas.contains(c.monto);
    });
    const bool es_iva = hallada != celdas.end();
    if (!es_iva) hallada = celdas.end() - 1;
    return {hallada->linea, hallada->debe,
            nombrar(*hallada) +
                (es_iva ? "un peso de redondeo del IVA: el 19 % exacto es "
                        : "un peso de redondeo: cuadra con ") +
                pesos(hallada->correcto)};
}

} // namespace

Diagnostico explicar(const std::vector<Linea>& lineas) {
    Diagnostico d;
    for (const Linea& l : lineas) d.diferencia += monto(l.debe) - monto(l.haber);
    if (d.diferencia == 0) return d;
    const std::vector<Celda> celdas = celdas_de(lineas, d.diferencia);
    if (std::abs(d.diferencia) == 1) {
        d.causas.push_back(de_redondeo(celdas));
        return d;
    }
    for (const Causa& causa : CAUSAS)
        for (const Celda& c : celdas)
            if (causa.es(c)) d.causas.push_back({c.linea, c.debe, nombrar(c) + causa.texto(c)});
    return d;
}

std::string Diagnostico::texto() const {
    if (diferencia == 0) return "El comprobante está cuadrado";
    std::string t =
        "Diferencia " + pesos(std::abs(diferencia)) + ", falta en el " + lado(diferencia < 0) + "\n";
    if (causas.empty())
        return t + "\nNinguna causa usual la explica. Revise las líneas con el documento a la vista.";
    for (std::size_t i = 0; i < std::min<std::size_t>(causas.size(), 4); ++i) t += "\n" + causas[i].texto;
    return t;
}

} // namespace quorvel
