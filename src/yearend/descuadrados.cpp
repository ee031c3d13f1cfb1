#include "yearend/descuadrados.h"

#include "platform/db/literal.h"

namespace quorvel {

std::string lista_descuadrados(clsConexion& db, std::optional<EmpresaAnio> solo) {
    std::string donde;
    if (solo) {
        const std::string a = std::to_string(solo->anio);
        donde = " where empresa=" + sql_numero(solo->empresa) + " and f_comp between #01/01/" + a +
                "# and #12/31/" + a + "#";
    }
    const std::string clave = "empresa, subsistema, f_comp, documento, num_docum";
    std::string lista;
    for (const auto rs = db.NewRecord("SELECT " + clave + " From ctdquorvel" + donde + " group by " + clave +
                                      " Having coalesce(Sum(debe_nacional),0) <> "
                                      "coalesce(Sum(haber_nacional),0) order by " +
                                      clave);
         !rs->eof(); rs->MoveNext())
        lista += rs->fields("num_docum").Value.text() + " - ";
    return lista;
}

} // namespace quorvel
