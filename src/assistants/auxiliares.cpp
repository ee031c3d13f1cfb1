#include "assistants/auxiliares.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

namespace quorvel {
namespace {

std::string consulta_rut(const std::string& rut) {
    return "select * from ctxaux_cod a  where a.activo='1' and rut=" + sql_texto(rut);
}

void ejecutar(clsConexion& db, const std::string& sql) {
    if (db.executesql(sql) < 1) throw std::runtime_error(db.last_error());
}

bool existe(clsConexion& db, const std::string& sql) { return !db.NewRecord(sql)->eof(); }

std::string siguiente_codigo(clsConexion& db) {
    const auto rs = db.NewRecord("select max(auxiliar) as max_aux from ctxaux_cod a  where a.activo='1' ");
    std::int64_t n = rs->eof() ? 0 : val_entero(rs->fields("max_aux").Value.text());
    std::string codigo;
    do codigo = codigo_seis(std::to_string(++n));
    while (existe(db, "select auxiliar from ctxaux_cod where auxiliar=" + sql_texto(codigo)));
    return codigo;
}

} // namespace

std::vector<std::string> auxiliares_de_rut(clsConexion& db, const std::string& rut) {
    std::vector<std::string> entradas;
    for (const auto rs = db.NewRecord(consulta_rut(rut)); !rs->eof(); rs->MoveNext())
        entradas.push_back(recortar_fin(rs->fields("auxiliar").Value.text()) + " - " +
                           recortar_fin(rs->fields("n_auxiliar").Value.text()));
    return entradas;
}

void generar_auxiliar(clsConexion& db, const std::string& rut, const std::string& nombre) {
    if (recortar(rut).empty()) throw std::invalid_argument("Ingrese RUT");
    if (existe(db, consulta_rut(rut))) return;
    Transaccion t(db);
    if (!existe(db, "select * from ctmtipoaux  where tipo_aux='PS' "))
        ejecutar(db, "insert into ctmtipoaux(tipo_aux, n_tipo_aux,sistema, activo)values ( 'PS', "
                     "'PERSONAS NATURALES Y JURIDICAS', '0', '1')");
    ejecutar(db, "insert into ctxaux_cod(auxiliar, n_auxiliar,tipo, activo,rut)values ( " +
                     sql_texto(siguiente_codigo(db)) + ", " + sql_texto(rut + " " + nombre) +
                     ", 'PS', '1', " + sql_texto(rut) + ")");
    t.confirmar();
}

} // namespace quorvel
