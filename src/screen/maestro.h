#pragma once
#include "platform/db/clsConexion.h"
#include "platform/db/literal.h"
#include "text/letras_utf8.h"

#include <string>

namespace quorvel {

/// Searches a master recordset by code. @return false: unknown code, there is no current row then
[[nodiscard]] inline bool buscar_codigo(Recordset& rs, const char* columna, const std::string& codigo) {
    rs.FindFirst(std::string(columna) + "=" + sql_texto(codigo));
    return !rs.nomatch();
}
/// A text of the current row, without blanks at its end.
[[nodiscard]] inline std::string campo(Recordset& rs, const char* nombre) {
    return recortar_fin(rs.fields(nombre).Value.text());
}

} // namespace quorvel
