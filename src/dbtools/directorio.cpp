#include "dbtools/directorio.h"

#include "dbtools/sin_clave.h"
#include "platform/db/literal.h"
#include "text/letras_utf8.h"

#include <algorithm>
#include <set>

namespace quorvel::dbtools {
namespace {

constexpr std::size_t PANTALLA = 200;
/// Behind every text that begins alike.
constexpr const char* FINAL = "\xEF\xBF\xBF";

std::string tabla(const std::string& motor) {
    // compared by bytes, so that an index leads to all that begins with a text
    const char* const orden = motor == "sqlite" ? "" : " collate \"C\"";
    return std::string("create table if not exists admdirectorio (clave text") + orden +
           " not null, conexion text not null, empresa integer not null, nombre text not null, rut text not "
           "null); create index if not exists admdirectorio_clave on admdirectorio (clave); create index if "
           "not "
           "exists admdirectorio_conexion on admdirectorio (conexion, empresa)";
}

std::string sin_puntos(const std::string& texto) {
    std::string limpio = sin_acentos(recortar(texto));
    std::erase_if(limpio, [](char c) { return c == '.' || c == '-'; });
    return limpio;
}

/// What somebody may begin to type: the RUT, the name, and the name from each of its words on.
std::set<std::string> claves(const std::string& nombre, const std::string& rut) {
    const std::string plano = sin_puntos(nombre);
    std::set<std::string> todas{sin_puntos(rut), plano};
    for (std::size_t blanco = plano.find(' '); blanco != std::string::npos;
         blanco = plano.find(' ', blanco + 1))
        todas.insert(recortar(plano.substr(blanco)));
    todas.erase("");
    return todas;
}

} // namespace

int anotar_en_directorio(Base& directorio, const std::string& conexion) {
    const std::string limpia = sin_clave(normalizar_conexion(conexion));
    const auto empresas = abrir_base(conexion, Abrir::existente)
                              ->consultar("select empresa, n_empresa, rut from admempresa order by empresa");
    directorio.ejecutar(tabla(directorio.motor()));
    Lote lote(directorio);
    directorio.ejecutar("delete from admdirectorio where conexion=" + sql_texto(limpia));
    std::string filas;
    const auto escribir = [&] {
        if (!filas.empty()) directorio.ejecutar("insert into admdirectorio values " + filas.substr(1));
        filas.clear();
    };
    for (const auto& e : empresas) {
        for (const std::string& clave : claves(e[1], e[2]))
            filas += ",(" + sql_texto(clave) + "," + sql_texto(limpia) + "," + e[0] + "," +
                     sql_texto(recortar_fin(e[1])) + "," + sql_texto(recortar_fin(e[2])) + ")";
        if (filas.size() > 100000) escribir();
    }
    escribir();
    lote.confirmar();
    return static_cast<int>(empresas.size());
}

std::vector<EmpresaUbicada> buscar_en_directorio(Base& directorio, const std::string& texto) {
    const std::string plano = sin_puntos(texto);
    std::vector<EmpresaUbicada> halladas;
    std::set<std::pair<std::string, int>> vistas;
    for (const auto& fila : directorio.consultar(
             "select conexion, empresa, nombre, rut from admdirectorio where clave >= " + sql_texto(plano) +
             " and clave < " + sql_texto(plano + FINAL) + " order by clave limit " +
             std::to_string(PANTALLA))) {
        EmpresaUbicada e{fila[0], std::stoi(fila[1]), fila[2], fila[3]};
        if (vistas.emplace(e.conexion, e.empresa).second) halladas.push_back(std::move(e));
    }
    return halladas;
}

std::vector<std::string> bases_del_directorio(Base& directorio) {
    std::vector<std::string> bases;
    for (const auto& fila :
         directorio.consultar("select distinct conexion from admdirectorio order by conexion"))
        bases.push_back(fila[0]);
    return bases;
}

} // namespace quorvel::dbtools
