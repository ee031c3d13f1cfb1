#include "dbtools/usuarios.h"

#include "dbtools/base.h"
#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "voucher/pasos.h"

#include <stdexcept>

namespace quorvel::dbtools {

int agregar_usuario(const std::string& conexion, const UsuarioNuevo& usuario) {
    const std::string nombre = recortar(sin_controles(usuario.nombre));
    if (nombre.empty()) throw std::invalid_argument("Falta el nombre del usuario");
    const auto db = abrir_sesion(normalizar_conexion(conexion));
    const auto rs = db->NewRecord("select max(usuario) as ultimo from admusuario");
    const auto codigo = static_cast<int>(rs->fields("ultimo").Value.integer()) + 1;
    const auto marca = [](bool negado) { return negado ? "0" : "1"; };
    const std::string permiso =
        std::string("11") + marca(usuario.sin_borrar_lineas) + "1" + marca(usuario.sin_imprimir);
    exigir(*db, "insert into admusuario(usuario,n_usuario,alias,permiso) values (" + sql_numero(codigo) +
                    "," + sql_texto(nombre) + "," + (usuario.solo_suyos ? "2" : "1") + "," +
                    sql_texto(permiso) + ")");
    return codigo;
}

} // namespace quorvel::dbtools
