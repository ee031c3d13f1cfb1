#include "largo.h"

#include "apoyo/empresa.h"
#include "apoyo/sesiones.h"
#include "dbtools/base.h"
#include "dbtools/esquema.h"
#include "text/letras_utf8.h"

namespace quorvel::bench {

std::string base_con_comprobante(int lineas) {
    const std::string conexion = "sqlite:" + apoyo::carpeta_nueva() + "/largo.db";
    dbtools::crear_esquema(conexion);
    sembrar_empresa(*abrir_sesion(conexion));
    const std::string sql =
        "insert into ctcquorvel(empresa,f_comp,documento,num_docum,moneda,t_debe,t_haber,libro) values "
        "(1,'2024-03-20','001','1','PS',%N000,%N000,'CONTABLES');"
        "with recursive s(n) as (select 1 union all select n+1 from s where n<2*%N) insert into "
        "ctdquorvel(empresa,f_comp,documento,num_docum,secuencia,centro,debe_nacional,haber_nacional,glosa) "
        "select 1,'2024-03-20','001','1',n,'101001',(n%2)*1000,(1-n%2)*1000,'linea' from s";
    dbtools::abrir_base(conexion, dbtools::Abrir::existente)
        ->ejecutar(reemplazar(sql, "%N", std::to_string(lineas / 2)));
    return conexion;
}

void agrandar_maestros(const std::string& conexion, int cuentas, int auxiliares) {
    const auto base = dbtools::abrir_base(conexion, dbtools::Abrir::existente);
    const bool sqlite = base->motor() == "sqlite";
    const auto serie = [&](int n) {
        return sqlite ? "(with recursive s(n) as (select 1 union all select n+1 from s where n<" +
                            std::to_string(n) + ") select n from s) s"
                      : "generate_series(1," + std::to_string(n) + ") s(n)";
    };
    const std::string ceros = sqlite ? "printf('%07d',n)" : "lpad(n::text,7,'0')";
    base->ejecutar(
        "begin; insert into ctmcentros(centro,n_centro,g_cuenta,activo,req_auxiliar) select '5'||" + ceros +
        ",'CUENTA '||n,(select min(g_cuenta) from ctmgcuenta),'1','0' from " + serie(cuentas) +
        "; insert into ctxaux_cod(auxiliar,n_auxiliar,tipo,activo,rut) select '7'||" + ceros +
        ",'AUXILIAR '||n,'PR','1','9.'||n||'-1' from " + serie(auxiliares) + "; commit; analyze");
}

} // namespace quorvel::bench
