#include "empresas.h"

#include "dbtools/base.h"
#include "text/letras_utf8.h"

namespace quorvel::bench {
namespace {

constexpr const char* COPIAS = "create temp table cabeceras as select * from ctcquorvel;"
                               "create temp table lineas as select * from ctdquorvel;"
                               "create temp table anios as select * from ctmconfigu;"
                               "create temp table emitidos as select * from adxemp_doc";
/// Attachment sets are counted over all companies.
constexpr const char* OTRA =
    "insert into admempresa(empresa,n_empresa) values (%E,'Empresa %E');"
    "update cabeceras set empresa=%E, comprobante_adjunto=comprobante_adjunto+%N;"
    "update lineas set empresa=%E; update anios set empresa=%E; update emitidos set empresa=%E;"
    "insert into ctcquorvel select * from cabeceras; insert into ctdquorvel select * from lineas;"
    "insert into ctmconfigu select * from anios; insert into adxemp_doc select * from emitidos";
constexpr const char* SALDOS =
    "insert into ctmsdcenth(empresa,anio,centro) select e.empresa,2024,c.centro from admempresa e, (values "
    "('1'),('109'),('109001'),('2'),('201'),('201001'),('5'),('501'),('501001'),('501002')) c(centro);"
    "insert into ctmsdmayor(empresa,anio,centro,auxiliar) select empresa,2024,'201001','000013' from "
    "admempresa;"
    "insert into admusuario(usuario,n_usuario) select n, 'usuario '||n from generate_series(%U,%V) n";

} // namespace

void multiplicar(const std::string& conexion, int empresas, int comprobantes, int usuario, int usuarios) {
    const auto base = dbtools::abrir_base(conexion, dbtools::Abrir::existente);
    base->ejecutar("set synchronous_commit=off");
    base->ejecutar(COPIAS);
    for (int e = 2; e <= empresas; ++e)
        base->ejecutar(
            reemplazar(reemplazar(OTRA, "%E", std::to_string(e)), "%N", std::to_string(comprobantes)));
    base->ejecutar(reemplazar(reemplazar(SALDOS, "%U", std::to_string(usuario)), "%V",
                              std::to_string(usuario + usuarios - 1)));
    base->ejecutar("vacuum analyze");
    base->ejecutar("checkpoint");
}

} // namespace quorvel::bench
