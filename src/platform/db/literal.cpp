#include "platform/db/literal.h"

namespace quorvel {

std::string sql_texto(std::string_view valor) {
    std::string sql;
    sql.reserve(valor.size() + 2);
    sql += '\'';
    for (const char c : valor) {
        if (c == '\'') sql += '\'';
        sql += c == '\0' ? ' ' : c;
    }
    sql += '\'';
    return sql;
}

std::string sql_fecha(Fecha f) { return '#' + fecha_mdy(f) + '#'; }
std::string sql_fecha(std::optional<Fecha> f) { return f ? sql_fecha(*f) : "null"; }
std::string sql_numero(std::int64_t n) { return std::to_string(n); }
std::string sql_numero(Decimal n) { return n.plano(); }

} // namespace quorvel
