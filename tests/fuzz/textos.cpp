// Goal: amounts, dates, RUTs and words: what is shown is read again as the same, whatever was typed.
#include "fuzz/fuzz.h"
#include "text/basLetras.h"
#include "text/fecha.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/rut.h"

#include <cmath>
#include <stdexcept>

namespace quorvel::fuzz {
namespace {

constexpr double HASTA = 1e15; // fifteen significant digits are kept

void montos(std::string_view t) {
    for (const double x : {valnumerobase(t), valnumeroformato(t), Round(valnumeroformato(t))}) {
        exigir(std::isfinite(x), "a number is finite", t);
        const std::string pesos = formato(x, "#,##0"), centavos = formato(x, "#,##0.00");
        exigir(formato(valnumeroformato(pesos), "#,##0") == pesos, "a shown amount is read again", pesos);
        exigir(formato(valnumeroformato(centavos), "#,##0.00") == centavos, "... its decimals", centavos);
        const double cifra = std::abs(x) * 5e-15; // half of the last significant digit goes first
        exigir(std::abs(x) >= HASTA || std::abs(valnumeroformato(pesos) - x) <= 0.5001 + cifra,
               "rounding moves by half a peso", pesos);
        for (const char* patron : {"0", "00", "000000", "0.0", "0.00", "#,##0.0"})
            exigir(!formato(x, patron).empty(), "a number shows something", t);
    }
    const Decimal d = Decimal::leer(t);
    const std::string exacto = d.formato("#,##0.000000");
    exigir(Decimal::leer(exacto) == d, "an exact amount is read again", exacto);
    exigir(d + Decimal(1) - Decimal(1) == d && d - d == Decimal(0), "sums are exact", exacto);
    if (const auto sql = numero_sql(t)) {
        exigir(sql->find_first_not_of("-0123456789.") == std::string::npos && sql->find_last_of('-') + 1 <= 1,
               "an amount for a statement is a number", *sql);
        exigir(numero_sql(reemplazar(*sql, ".", ",")) == sql, "... and stays one", *sql);
        exigir(Decimal::leer(reemplazar(*sql, ".", ",")) == d, "both readings agree", *sql);
    }
    const std::string codigo = codigo_seis(t);
    exigir(codigo_seis(codigo) == codigo, "a code stays as it is", codigo);
    (void)val_entero(t);
}

void fechas(std::string_view t) {
    if (const auto f = leer_fecha(t)) {
        exigir(f->ok() && anio(*f) >= 1, "a date is one of the calendar", t);
        exigir(leer_fecha(fecha_dmy(*f)) == f && leer_fecha_mdy(fecha_mdy(*f)) == f &&
                   leer_fecha_iso(fecha_iso(*f)) == f,
               "a date is read again in each form", t);
    }
    if (const auto f = leer_fecha_mdy(t)) exigir(leer_fecha(fecha_dmy(*f)) == f, "month first", t);
    if (const auto f = leer_fecha_iso(t)) exigir(leer_fecha(fecha_dmy(*f)) == f, "year first", t);
}

void ruts(std::string_view t) {
    const ResultadoRut r = validarut(t);
    exigir(r.valido == r.mensaje.empty() && (r.valido || r.texto.empty()), "an answer or a message", t);
    if (r.valido) {
        const ResultadoRut otra = validarut(r.texto);
        exigir(otra.valido && otra.texto == r.texto, "a valid RUT stays as it is", r.texto);
    }
    const std::string guion = con_guion(t);
    exigir(con_guion(guion) == guion, "one dash is enough", guion);
}

void letras(std::string_view t) {
    try {
        const std::string palabras = Letras(t, 0, "pesos", "centavos");
        exigir(!palabras.empty() && palabras.find_first_of("0123456789") == std::string::npos, "words", t);
        exigir(largo(Letras(t, 40, "pesos")) == 40, "words have the width asked for", t);
        exigir(!NumeroALetras(t).empty(), "what has words with decimals has them without", t);
    } catch (const std::invalid_argument&) {
    } catch (const std::out_of_range&) {
    }
}

void letra_a_letra(std::string_view t) {
    const std::string n = normalizar(t);
    exigir(normalizar(n) == n, "composed is composed", n);
    exigir(largo(n) <= t.size(), "no more letters than bytes", n);
    exigir(minusculas(minusculas(n)) == minusculas(n), "lower case stays", n);
    exigir(primeros(n, largo(n)) == n && largo(primeros(n, 3)) <= 3, "letters are cut whole", n);
    exigir(recortar(recortar(t)) == recortar(t) && igual_sin_caso(t, t), "trimmed stays trimmed", t);
    (void)sin_acentos(t);
    (void)mayusculas(t);
}

} // namespace
} // namespace quorvel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvel::fuzz;
    const std::string_view t = texto(data, size);
    montos(t);
    fechas(t);
    ruts(t);
    letras(t);
    letra_a_letra(t);
    return 0;
}
