#include "historia/proteccion.h"

#include "platform/db/literal.h"

namespace quorvel {

std::string texto_mes(int anio, int mes) {
    return std::to_string(anio) + (mes < 10 ? "-0" : "-") + std::to_string(mes);
}

bool Proteccion::mes_bloqueado(Fecha f) const {
    return cierre && meses.find(texto_mes(anio(f), mes(f))) != std::string::npos;
}

Proteccion leer_proteccion(Recordset& fila) {
    return {fila.fields("guarda").Value.integer() == 1, fila.fields("cerrado").Value.integer() == 1,
            fila.fields("meses").Value.text()};
}

Proteccion leer_proteccion(clsConexion& db, int empresa) {
    if (!db.has_table("ctmhistoria")) return {};
    const auto rs =
        db.NewRecord("select guarda, cerrado, meses from ctmhistoria where empresa=" + sql_numero(empresa));
    return rs->eof() ? Proteccion{} : leer_proteccion(*rs);
}

} // namespace quorvel
