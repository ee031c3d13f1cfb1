#include "voucher/numeracion.h"

#include "platform/db/literal.h"

#include <limits>

namespace quorvel {
namespace {

std::int64_t siguiente(clsConexion& db, const std::string& sql) {
    const auto rs = db.NewRecord(sql);
    const std::int64_t mayor = rs->eof() ? 0 : rs->fields("sec").Value.integer();
    return mayor < std::numeric_limits<std::int64_t>::max() ? mayor + 1 : mayor;
}

} // namespace

std::int64_t proponer_numero(clsConexion& db, int empresa, const std::string& documento, int anio) {
    const char* const mayor =
        db.TypeDB() == 2 ? "select max(val(num_docum)) as sec from ctcquorvel where empresa="
                         : "select max(cast(num_docum as integer)) as sec from ctcquorvel where empresa=";
    return siguiente(db, mayor + sql_numero(empresa) + " and documento =" + sql_texto(documento) +
                             " and year(f_comp) =" + sql_numero(anio));
}

std::int64_t proponer_correlativo(clsConexion& db, int empresa, const std::string& libro, int anio, int mes) {
    return siguiente(
        db, "select max(nro_correlativo) as sec from ctcquorvel where empresa=" + sql_numero(empresa) +
                " and libro =" + sql_texto(libro) + " and year(f_comp) =" + sql_numero(anio) +
                " and month(f_comp) =" + sql_numero(mes));
}

} // namespace quorvel
