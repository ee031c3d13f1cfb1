#include "catalogos/reglas.h"

#include "catalogos/filas.h"
#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/pasos.h"

#include <algorithm>

namespace quorvel::reglas {
namespace {

void revisar_codigo(clsConexion& db, const char* grupos, const FilaCatalogo& fila, Observaciones& o) {
    const std::string &codigo = fila[0], &grupo = fila[2];
    const auto rs =
        db.NewRecord(std::string("select longitud from ") + grupos + " where g_cuenta=" + sql_texto(grupo));
    if (codigo.empty() || rs->eof()) return; // told by the columns themselves
    if (!codigo.starts_with(grupo)) o.push_back({"centro", "El código empieza con el grupo: " + grupo});
    const auto longitud = static_cast<std::size_t>(rs->at(0).integer());
    const bool recibe = fila[3] == "1";
    if (codigo.size() > longitud || (recibe && codigo.size() < longitud))
        o.push_back({"centro", (recibe ? "Para recibir movimientos lleva " : "Lleva a lo más ") +
                                   std::to_string(longitud) + " dígitos en el grupo " + grupo});
}

/// Why a format of levels is none, "" when it is one.
std::string falta_en_niveles(const std::string& formato) {
    const auto puntos = std::ranges::count(formato, '.');
    const bool forma = formato.find_first_not_of("9.") == std::string::npos && !formato.starts_with('.') &&
                       !formato.ends_with('.') && formato.find("..") == std::string::npos;
    if (!forma) return "Los niveles se escriben con nueves y puntos: 9.99.999";
    return puntos > 9 || static_cast<std::ptrdiff_t>(formato.size()) - puntos > 20
               ? "Caben 10 niveles y 20 dígitos"
               : "";
}

void revisar_niveles(clsConexion& db, const char* codigos, const FilaCatalogo& fila,
                     const FilaCatalogo& antes, Observaciones& o) {
    const std::string& formato = fila.back();
    if (formato.empty()) return;
    if (const std::string falta = falta_en_niveles(formato); !falta.empty())
        return o.push_back({"formato_centro", falta});
    const auto largo = [](const std::string& f) { return reemplazar(f, ".", "").size(); };
    if (antes.empty() || largo(formato) == largo(antes.back())) return;
    if (has_rows(db, std::string("select top 1 centro from ") + codigos +
                         " where g_cuenta=" + sql_texto(fila[0]) + " and activo='1'"))
        o.push_back({"formato_centro", "Sus códigos ya tienen otro largo"});
}

void niveles(clsConexion& db, const char* tabla, const FilaCatalogo& fila) {
    const std::string& formato = fila.back();
    const auto puntos = std::ranges::count(formato, '.');
    exigir(db, std::string("update ") + tabla + " set num_nivel=" + sql_numero(puntos + 1) +
                   ", longitud=" + sql_numero(static_cast<std::int64_t>(formato.size()) - puntos) +
                   " where g_cuenta=" + sql_texto(fila[0]));
}

std::string todos_los_permisos(const std::string& usuario) {
    return "select top 1 usuario from admusuario where usuario<>" + sql_numero(val_entero(usuario)) +
           " and alias<>2 and permiso='11111'";
}

} // namespace

void revisar_cuenta(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo&, Observaciones& o) {
    revisar_codigo(db, "ctmgcuenta", fila, o);
}
void revisar_centro(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo&, Observaciones& o) {
    revisar_codigo(db, "ctmgcuentc", fila, o);
}
void revisar_grupo(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo& antes, Observaciones& o) {
    revisar_niveles(db, "ctmcentros", fila, antes, o);
}
void revisar_grupo_centros(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo& antes,
                           Observaciones& o) {
    revisar_niveles(db, "ctmcentroc", fila, antes, o);
}

void revisar_auxiliar(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo&, Observaciones& o) {
    if (fila[2].empty()) return;
    const auto otro =
        db.NewRecord("select top 1 auxiliar, n_auxiliar from ctxaux_cod where rut=" + sql_texto(fila[2]) +
                     " and activo='1' and auxiliar<>" + sql_texto(fila[0]));
    if (!otro->eof())
        o.push_back(
            {"rut",
             "También lo tiene " + recortar_fin(otro->at(0).text()) + " " + recortar_fin(otro->at(1).text()),
             false});
}

void revisar_tipo(clsConexion&, const FilaCatalogo& fila, const FilaCatalogo&, Observaciones& o) {
    if (largo(fila[0]) != 2) o.push_back({"tipo_aux", "Son dos letras"});
}

void revisar_usuario(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo& antes, Observaciones& o) {
    const bool todo = fila[2] == "0" && fila[3] == "1" && fila[4] == "1";
    if (!antes.empty() && !todo && !has_rows(db, todos_los_permisos(fila[0])))
        o.push_back({"n_usuario", "Debe quedar alguien con todos los permisos"});
}

std::string unico_usuario(clsConexion& db, const FilaCatalogo& fila) {
    return has_rows(db, todos_los_permisos(fila[0])) ? "" : "Debe quedar alguien con todos los permisos";
}

std::string cuenta_configurada_de(clsConexion& db, const FilaCatalogo& fila) {
    for (const CuentaConfigurada& c : cuentas_configuradas()) {
        const auto rs = db.NewRecord("select top 1 empresa, anio from ctmconfigu where " +
                                     std::string(c.columna) + "=" + sql_texto(fila[0]));
        if (!rs->eof())
            return std::string("Está en la configuración del año ") + rs->at(1).text() + " de la empresa " +
                   rs->at(0).text() + ": " + c.titulo;
    }
    return {};
}

std::string siguiente_documento(clsConexion& db) {
    for (std::int64_t n = 1; n < 1000; ++n) {
        const std::string codigo = rellenar(std::to_string(n), 3);
        if (!has_rows(db, "select documento from admdocumen where documento=" + sql_texto(codigo)))
            return codigo;
    }
    return {};
}

std::string siguiente_usuario(clsConexion& db) {
    return std::to_string(db.NewRecord("select max(usuario) as ultimo from admusuario")->at(0).integer() + 1);
}

void niveles_de_cuentas(clsConexion& db, const FilaCatalogo& fila) { niveles(db, "ctmgcuenta", fila); }
void niveles_de_centros(clsConexion& db, const FilaCatalogo& fila) { niveles(db, "ctmgcuentc", fila); }

void habilitar_documento(clsConexion& db, const FilaCatalogo& fila) {
    const std::string documento = sql_texto(fila[0]);
    exigir(db, "delete from adxdoc_sub where subsistema='01' and documento=" + documento);
    if (fila[2] == "1")
        exigir(db, "insert into adxdoc_sub(subsistema,documento) values ('01'," + documento + ")");
    std::vector<std::int64_t> sin_numerar;
    for (const auto rs =
             db.NewRecord("select empresa from admempresa where empresa not in (select empresa from "
                          "adxemp_doc where documento=" +
                          documento + ")");
         !rs->eof(); rs->MoveNext())
        sin_numerar.push_back(rs->at(0).integer());
    for (const std::int64_t empresa : sin_numerar)
        exigir(db, "insert into adxemp_doc(empresa,documento,ultimo_emitido) values (" + sql_numero(empresa) +
                       "," + documento + ",'0')");
}

void retirar_documento(clsConexion& db, const FilaCatalogo& fila) {
    for (const char* tabla : {"adxdoc_sub", "adxemp_doc"})
        exigir(db, std::string("delete from ") + tabla + " where documento=" + sql_texto(fila[0]));
}

} // namespace quorvel::reglas
