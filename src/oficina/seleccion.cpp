#include "oficina/seleccion.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/cargar.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <stdexcept>

namespace quorvel::oficina {

namespace {

std::string consulta(const Oficina& o, const Seleccion& s) {
    std::string sql = consulta_busqueda(o.empresa, o.usuario, o.alias);
    if (const auto f = leer_fecha_opcion(s.desde)) sql += " and f_comp>=" + sql_fecha(*f);
    if (const auto f = leer_fecha_opcion(s.hasta)) sql += " and f_comp<=" + sql_fecha(*f);
    if (!s.libro.empty()) sql += " and libro=" + sql_texto(s.libro);
    if (!s.documento.empty()) sql += " and documento=" + sql_texto(s.documento);
    return sql + " order by f_comp, documento, num_docum";
}

} // namespace

void agregar_seleccion(CLI::App& comando, Seleccion& s) {
    comando.add_option("--from", s.desde, "Desde esta fecha, dd/mm/aaaa");
    comando.add_option("--to", s.hasta, "Hasta esta fecha, dd/mm/aaaa");
    comando.add_option("--book", s.libro, "Libro: CONTABLES, VENTAS, COMPRAS, RETENCIONES…");
    comando.add_option("--document", s.documento, "Código del documento, por ejemplo 001");
    comando.add_option("--number", s.numeros, "Número, o dos unidos por un guión: 15-30");
}

std::optional<Fecha> leer_fecha_opcion(const std::string& texto) {
    if (texto.empty()) return std::nullopt;
    if (auto f = leer_fecha(texto)) return f;
    if (auto f = leer_fecha_iso(texto)) return f;
    throw std::invalid_argument("\"" + texto + "\" no es una fecha (dd/mm/aaaa)");
}

std::optional<std::pair<std::int64_t, std::int64_t>> leer_numeros(const std::string& texto) {
    if (texto.empty()) return std::nullopt;
    const auto guion = texto.find('-');
    const std::string primero = texto.substr(0, guion);
    const std::string ultimo = guion == std::string::npos ? primero : texto.substr(guion + 1);
    const auto numero = [](const std::string& t) {
        return !t.empty() && t.size() <= 18 && t.find_first_not_of("0123456789") == std::string::npos;
    };
    if (!numero(primero) || !numero(ultimo))
        throw std::invalid_argument("\"" + texto + "\" no es un número ni dos unidos por un guión");
    return std::pair{val_entero(primero), val_entero(ultimo)};
}

Elegidos elegir(const Oficina& oficina, const Seleccion& s) {
    const auto numeros = leer_numeros(s.numeros);
    Elegidos e;
    for (const auto rs = oficina.db->NewRecord(consulta(oficina, s)); !rs->eof(); rs->MoveNext()) {
        const auto valor = [&](const char* columna) {
            return recortar_fin(rs->fields(columna).Value.text());
        };
        const Clave k{oficina.empresa, valor("subsistema"),
                      rs->fields("f_comp").Value.date().value_or(Fecha{}), valor("documento"),
                      valor("num_docum")};
        const std::int64_t n = val_entero(k.num_docum);
        if (numeros && (n < numeros->first || n > numeros->second)) continue;
        if (valor("estado") == "P")
            e.claves.push_back(k);
        else
            ++e.omitidos;
    }
    // as numbers: 9 before 10
    std::ranges::stable_sort(e.claves, {}, [](const Clave& k) {
        return std::tuple(k.f_comp, std::string_view(k.documento), val_entero(k.num_docum));
    });
    return e;
}

Comprobante leer_comprobante(clsConexion& db, const Clave& k) {
    auto c = leer_cabecera(db, k.empresa, k.f_comp, k.documento, k.num_docum, k.subsistema);
    if (!c) throw std::runtime_error("Otra persona eliminó el comprobante " + nombre_de_comprobante(k));
    c->lineas = leer_lineas(db, k);
    return *c;
}

std::string nombre_de_archivo(const Clave& k) {
    std::string nombre = fecha_iso(k.f_comp) + "_" + recortar(k.documento) + "_" + recortar(k.num_docum);
    for (char& c : nombre)
        if (!(c >= '0' && c <= '9') && !(c >= 'A' && c <= 'Z') && !(c >= 'a' && c <= 'z') && c != '-')
            c = '_';
    return nombre.substr(0, 100);
}

std::string nombre_de_comprobante(const Clave& k) {
    return k.documento + " Nro." + recortar(k.num_docum) + " Fecha:" + fecha_dmy(k.f_comp);
}

} // namespace quorvel::oficina
