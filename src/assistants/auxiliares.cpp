#include "assistants/auxiliares.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/rut.h"

#include <algorithm>
#include <optional>

namespace quorvel {
namespace {

std::string consulta_rut(const std::string& rut) {
    return "select * from ctxaux_cod a  where a.activo='1' and rut=" + sql_texto(rut);
}

void ejecutar(clsConexion& db, const std::string& sql) {
    if (db.executesql(sql) < 1) throw std::runtime_error(db.last_error());
}

constexpr std::int64_t MAYOR_SEIS = 999999;

/// The number that a code is; nothing for a code with other signs.
std::optional<std::int64_t> numero_de(const std::string& codigo) {
    const bool digitos =
        std::all_of(codigo.begin(), codigo.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!digitos) return std::nullopt;
    return val_entero(codigo);
}

/// Highest number of an active code with up to six digits, or with one more wherever the last is used up.
/// Reads them all.
std::int64_t mayor_numero(clsConexion& db) {
    std::vector<std::int64_t> numeros;
    const auto rs = db.NewRecord("select auxiliar from ctxaux_cod a  where a.activo='1' ");
    for (; !rs->eof(); rs->MoveNext())
        if (const auto n = numero_de(recortar(rs->at(0).text()))) numeros.push_back(*n);
    std::sort(numeros.begin(), numeros.end());
    for (std::int64_t tope = MAYOR_SEIS;; tope = tope * 10 + 9) {
        const auto fin = std::upper_bound(numeros.begin(), numeros.end(), tope);
        const std::int64_t mayor = fin == numeros.begin() ? 0 : *(fin - 1);
        if (mayor < tope) return mayor;
    }
}

/// The highest text of the index is the highest number wherever every code has six digits.
std::int64_t ultimo_numero(clsConexion& db) {
    const auto rs = db.NewRecord("select max(auxiliar) as max_aux from ctxaux_cod a  where a.activo='1' ");
    const std::string mayor = recortar(rs->fields("max_aux").Value.text());
    const auto n = numero_de(mayor);
    return n && mayor.size() == 6 && *n < MAYOR_SEIS ? *n : mayor_numero(db);
}

} // namespace

std::string siguiente_codigo(clsConexion& db) {
    std::int64_t n = ultimo_numero(db);
    std::string codigo;
    do codigo = codigo_seis(std::to_string(++n));
    while (has_rows(db, "select auxiliar from ctxaux_cod where auxiliar=" + sql_texto(codigo)));
    return codigo;
}

std::string codigo_de_entrada(const std::string& entrada) {
    return recortar(std::string_view(entrada).substr(0, entrada.find(" - ")));
}

std::vector<std::string> auxiliares_de_rut(clsConexion& db, const std::string& rut) {
    std::vector<std::string> entradas;
    for (const auto rs = db.NewRecord(consulta_rut(rut)); !rs->eof(); rs->MoveNext())
        entradas.push_back(recortar_fin(rs->fields("auxiliar").Value.text()) + " - " +
                           recortar_fin(rs->fields("n_auxiliar").Value.text()));
    return entradas;
}

void generar_auxiliar(clsConexion& db, const std::string& rut, const std::string& nombre) {
    if (recortar(rut).empty()) throw std::invalid_argument("Ingrese RUT");
    if (const ResultadoRut r = validarut(rut); !r.valido) throw std::invalid_argument(r.mensaje);
    if (has_rows(db, consulta_rut(rut))) return;
    Transaccion t(db);
    if (!has_rows(db, "select * from ctmtipoaux  where tipo_aux='PS' "))
        ejecutar(db, "insert into ctmtipoaux(tipo_aux, n_tipo_aux,sistema, activo)values ( 'PS', "
                     "'PERSONAS NATURALES Y JURIDICAS', '0', '1')");
    ejecutar(db, "insert into ctxaux_cod(auxiliar, n_auxiliar,tipo, activo,rut)values ( " +
                     sql_texto(siguiente_codigo(db)) + ", " + sql_texto(rut + " " + nombre) +
                     ", 'PS', '1', " + sql_texto(rut) + ")");
    t.confirmar();
}

} // namespace quorvel
