#include "oficina/oficina.h"

#include "dbtools/base.h"
#include "platform/db/literal.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace quorvel::oficina {

namespace fs = std::filesystem;

namespace {

std::unique_ptr<Recordset> existente(clsConexion& db, const char* que, const std::string& tabla,
                                     const std::string& columna, int codigo) {
    auto rs = db.NewRecord("select * from " + tabla + " where " + columna + "=" + sql_numero(codigo));
    if (rs->eof()) throw std::runtime_error(std::string("No existe ") + que + " " + std::to_string(codigo));
    return rs;
}

} // namespace

Oficina abrir_oficina(const OpcionesOficina& o) {
    Oficina oficina{.db = abrir_sesion(dbtools::normalizar_conexion(o.conexion)),
                    .empresa = o.empresa,
                    .usuario = o.usuario};
    const auto empresa = existente(*oficina.db, "la empresa", "admempresa", "empresa", o.empresa);
    const auto usuario = existente(*oficina.db, "el usuario", "admusuario", "usuario", o.usuario);
    oficina.n_empresa = empresa->fields("n_empresa").Value.text();
    oficina.n_usuario = usuario->fields("n_usuario").Value.text();
    oficina.permiso = usuario->fields("permiso").Value.text();
    oficina.alias = static_cast<int>(usuario->fields("alias").Value.integer());
    return oficina;
}

CarpetaTemporal::CarpetaTemporal(const fs::path& donde) {
    std::string plantilla = (donde / ".quorvel-XXXXXX").string();
    if (mkdtemp(plantilla.data()) == nullptr)
        throw std::runtime_error("No se puede escribir en " + donde.string() + ": " + std::strerror(errno));
    ruta_ = plantilla;
}
CarpetaTemporal::~CarpetaTemporal() {
    std::error_code ignorado;
    fs::remove_all(ruta_, ignorado);
}

} // namespace quorvel::oficina
