#include "assistants/impuestos.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"

namespace quorvel {

std::vector<std::string> entradas_otro_impuesto(clsConexion& db) {
    std::vector<std::string> entradas{""};
    for (const auto rs = db.NewRecord("SELECT a.* from ctmotroimp a  order by otro_impuesto"); !rs->eof();
         rs->MoveNext())
        entradas.push_back(recortar_fin(rs->fields("otro_impuesto").Value.text()) + " " +
                           recortar_fin(rs->fields("descripcion").Value.text()));
    return entradas;
}

std::optional<std::string> tasa_de_entrada(clsConexion& db, const std::string& entrada) {
    const std::string codigo = recortar(primeros(entrada, 3));
    if (codigo.empty()) return std::nullopt;
    const auto rs = db.NewRecord("SELECT a.* from ctmotroimp a where otro_impuesto=" + sql_texto(codigo));
    if (rs->eof()) return std::nullopt;
    return reemplazar(rs->fields("tasa").Value.text(), ".", ",");
}

} // namespace quorvel
