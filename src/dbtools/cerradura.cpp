#include "dbtools/cerradura.h"

#include "text/letras_utf8.h"

namespace quorvel::dbtools {
namespace {

constexpr const char* AVISO = "La empresa se está trasladando a otra base de datos";
struct Cambio {
    const char *nombre, *de_la_empresa;
};
constexpr Cambio CAMBIOS[] = {{"insert", "new.empresa=%E"},
                              {"update", "(new.empresa=%E or old.empresa=%E)"},
                              {"delete", "old.empresa=%E"}};
constexpr const char* EN_ARCHIVO =
    "create trigger %N before %C on %T when %W begin select raise(abort,'%A'); end";
constexpr const char* EN_SERVIDOR =
    "create trigger %N before %C on %T for each row when (%W) execute function quorvel_traslado()";
constexpr const char* FUNCION =
    "create or replace function quorvel_traslado() returns trigger language plpgsql as "
    "$$ begin raise exception '%A'; end $$";

} // namespace

void Cerradura::cerrar(const std::vector<TablaMovida>& tablas) {
    abrir(tablas);
    const bool archivo = base_.motor() == "sqlite";
    if (!archivo) base_.ejecutar(reemplazar(FUNCION, "%A", AVISO));
    for (const TablaMovida& tabla : tablas)
        for (const auto& [cambio, de_la_empresa] : CAMBIOS) {
            std::string sql = archivo ? EN_ARCHIVO : EN_SERVIDOR;
            for (const auto& [marca, texto] :
                 {std::pair<const char*, std::string>{"%N", "traslado_" + empresa_ + "_" + tabla.nombre +
                                                                "_" + cambio},
                  {"%C", cambio},
                  {"%T", tabla.nombre},
                  {"%W", de_la_empresa},
                  {"%E", empresa_},
                  {"%A", AVISO}})
                sql = reemplazar(sql, marca, texto);
            base_.ejecutar(sql);
        }
}

void Cerradura::abrir(const std::vector<TablaMovida>& tablas) {
    for (const TablaMovida& tabla : tablas)
        for (const Cambio& cambio : CAMBIOS)
            base_.ejecutar("drop trigger if exists traslado_" + empresa_ + "_" + tabla.nombre + "_" +
                           cambio.nombre + (base_.motor() == "sqlite" ? "" : " on " + tabla.nombre));
}

} // namespace quorvel::dbtools
