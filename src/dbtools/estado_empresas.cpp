#include "dbtools/estado_empresas.h"

#include "dbtools/base.h"
#include "text/fecha.h"
#include "text/letras_utf8.h"

#include <cstdlib>
#include <map>

namespace quorvel::dbtools {
namespace {

constexpr const char* EMPRESAS = "select empresa, n_empresa, rut from admempresa order by empresa";
constexpr const char* DESCUADRADOS = "select empresa, count(*) from (select empresa from ctdquorvel group by "
                                     "empresa, f_comp, documento, num_docum "
                                     "having sum(debe_nacional) <> sum(haber_nacional)) z group by empresa";
constexpr const char* MESES = "select empresa, count(*) from (select distinct empresa, substr(cast(f_comp as "
                              "char(10)),1,7) as mes from "
                              "ctcquorvel) z where not exists (select 1 from ctmconfigu k where "
                              "k.empresa=z.empresa and k.f_comp_cierre is "
                              "not null and k.anio=cast(substr(z.mes,1,4) as integer)) group by empresa";
constexpr const char* ULTIMA = "select empresa, max(f_ult_modificacion) from ctcquorvel group by empresa";

std::map<int, std::string> por_empresa(Base& base, const char* sql) {
    std::map<int, std::string> valores;
    for (const auto& fila : base.consultar(sql)) valores[std::atoi(fila[0].c_str())] = fila[1];
    return valores;
}

std::string dia(const std::string& iso) {
    const auto fecha = leer_fecha_iso(iso);
    return fecha ? fecha_dmy(*fecha) : "";
}

} // namespace

std::vector<EstadoEmpresa> estado_de_empresas(const std::string& conexion) {
    const auto base = abrir_base(conexion, Abrir::existente);
    auto descuadrados = por_empresa(*base, DESCUADRADOS), meses = por_empresa(*base, MESES),
         ultima = por_empresa(*base, ULTIMA);
    std::vector<EstadoEmpresa> estados;
    for (const auto& fila : base->consultar(EMPRESAS)) {
        const int empresa = std::atoi(fila[0].c_str());
        estados.push_back({empresa, recortar_fin(fila[1]), recortar_fin(fila[2]),
                           std::atol(descuadrados[empresa].c_str()), std::atol(meses[empresa].c_str()),
                           dia(ultima[empresa])});
    }
    return estados;
}

} // namespace quorvel::dbtools
