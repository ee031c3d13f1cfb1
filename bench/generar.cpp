#include "generar.h"

#include "apoyo/empresa.h"
#include "dbtools/base.h"
#include "dbtools/esquema.h"
#include "dbtools/revisar.h"
#include "text/letras_utf8.h"

#include <stdexcept>

namespace quorvel::bench {
namespace {

/// The few words in which the engines differ.
struct Palabras {
    std::string serie;           ///< rows n = 1 … %N
    std::string ceros;           ///< number %X in six digits
    std::string fecha;           ///< the first of January, %M months and %D days later
    const char *antes, *despues; ///< what makes the load fast, and what it leaves in order
};

const Palabras SQLITE{"(with recursive s(n) as (select 1 union all select n+1 from s where n<%N) select n "
                      "from s) s",
                      "printf('%06d', %X)", "date('2024-01-01', (%M)||' months', (%D)||' days')",
                      "pragma synchronous=off; pragma cache_size=-400000", "analyze"};
const Palabras POSTGRES{
    "(select g as n from generate_series(1::bigint,%N) g) s", "lpad((%X)::text,6,'0')",
    "(date '2024-01-01' + make_interval(months => (%M)::integer, days => (%D)::integer))::date",
    "set synchronous_commit=off; set maintenance_work_mem='256MB'", "vacuum analyze"};

/// Kinds and books: of ten vouchers six are purchases, three sales and one a transfer.
const char* const DOCUMENTO = "case when n%10<6 then '002' else '001' end";
const char* const LIBRO = "case when n%10<6 then 'COMPRAS' when n%10<9 then 'VENTAS' else 'CONTABLES' end";
/// Every month gets as many; half of them within its last eight days. The dates rise with the numbers.
const char* const MES = "(n-1)*12/%N+((n-1)*12%%N)*2/%N";
const char* const DIA =
    "case when ((n-1)*12%%N)*2<%N then ((n-1)*12%%N)*40/%N else ((n-1)*12%%N)*16/%N-16 end";
const char* const MONTO = "(1000+(n*7919)%99991)*100";
/// Party 0 … 4999 and auxiliary 0 … 49999; the product bends an even spread towards the low numbers.
const char* const PARTE = "((n*7919)%5000)*((n*104729)%5000)/5000";
const char* const AUXILIAR = "100000+((n*7919)%50000)*((n*104729)%50000)/50000";

std::string escribir(std::string sql, const Palabras& p, int comprobantes) {
    const std::string n = std::to_string(comprobantes);
    const auto llamada = [&](const char* nombre, const std::string& forma) {
        for (std::size_t en; (en = sql.find(nombre)) != std::string::npos;) {
            const std::size_t dentro = en + std::string(nombre).size();
            std::size_t fin = dentro;
            for (int nivel = 1; nivel > 0; ++fin)
                nivel += sql.at(fin) == '(' ? 1 : sql.at(fin) == ')' ? -1 : 0;
            sql.replace(en, fin - en, reemplazar(forma, "%X", sql.substr(dentro, fin - dentro - 1)));
        }
    };
    sql = reemplazar(sql, "$documento", DOCUMENTO);
    sql = reemplazar(sql, "$libro", LIBRO);
    sql = reemplazar(sql, "$monto", MONTO);
    sql = reemplazar(sql, "$parte", PARTE);
    sql = reemplazar(sql, "$auxiliar", AUXILIAR);
    sql = reemplazar(sql, "$fecha", reemplazar(reemplazar(p.fecha, "%M", MES), "%D", DIA));
    llamada("$ceros(", p.ceros);
    sql = reemplazar(sql, "$serie", p.serie);
    return reemplazar(sql, "%N", n);
}

constexpr const char* CUENTAS = "insert into ctmcentros(centro,n_centro,g_cuenta,activo,req_auxiliar) select "
                                "g.g_cuenta||'5'||substr($ceros(n),3), 'CUENTA '||n, g.g_cuenta, '1', '0' "
                                "from $serie, ctmgcuenta g where g.g_cuenta in ('1','2','4','5')";
constexpr const char* AUXILIARES = "insert into ctxaux_cod(auxiliar,n_auxiliar,tipo,activo,rut) select "
                                   "$ceros(100000+n-1), 'AUXILIAR '||n, 'PR', '1', '9.'||n||'-1' from $serie";
constexpr const char* CABECERAS =
    "insert into ctcquorvel(empresa,f_comp,documento,num_docum,moneda,t_debe,t_haber,concepto,usuario,"
    "f_ult_modificacion,libro,doc_libro,num_ref,fecha_factura,rut_persona,nombre,monto_neto,ifrs,"
    "comprobante_adjunto,nro_correlativo) select 1, $fecha, $documento, cast(n as varchar(10)), 'PS', "
    "$monto+$monto/2+$monto/5, $monto+$monto/2+$monto/5, 'Documento de la empresa generada', 1+n%2, $fecha, "
    "$libro, case when n%10<9 then 'FACTURA' else ' ' end, cast(n as varchar(10))||' ', $fecha, "
    "'76.'||$ceros($parte)||'-5 ', 'PARTE '||($parte)||' ', $monto, "
    "case n%20 when 7 then '1' when 8 then '2' else '0' end, n, n from $serie";
/// Purchases charge an expense, a stock account and the tax against a party; sales the other way round.
constexpr const char* LINEAS =
    "insert into ctdquorvel(empresa,f_comp,documento,num_docum,secuencia,centro,auxiliar,debe_nacional,"
    "haber_nacional,glosa,num_ref) select 1, $fecha, $documento, cast(n as varchar(10)), l, "
    "case l when 1 then (case when n%10<6 then '55' else '45' end)||substr($ceros(1+((n*7919)%500)*((n*13)%"
    "500)/500),3) when 2 then '15'||substr($ceros(1+((n*31)%500)*((n*17)%500)/500),3) when 3 then '109001' "
    "else '25'||substr($ceros(1+(n*7)%20),3) end, case l when 4 then $ceros($auxiliar) else '' end, "
    "case when (l=4)=(n%10>=6) then importe else 0 end, case when (l=4)=(n%10>=6) then 0 else importe end, "
    "'Documento de la empresa generada', case when l=4 and n%3=0 then cast(n as varchar(10)) else '' end "
    "from (select n, l, case l when 1 then $monto when 2 then $monto/2 when 3 then $monto/5 "
    "else $monto+$monto/2+$monto/5 end as importe from $serie, (select 1 as l union all select 2 union all "
    "select 3 union all select 4) r) t";

} // namespace

void generar(const std::string& conexion, int comprobantes) {
    dbtools::crear_esquema(conexion);
    sembrar_empresa(*abrir_sesion(conexion));
    const auto base = dbtools::abrir_base(conexion, dbtools::Abrir::existente);
    const Palabras& p = base->motor() == "sqlite" ? SQLITE : POSTGRES;
    base->ejecutar(p.antes);
    for (const char* indice :
         {"numero", "correlativo", "contraparte", "nombre", "referencia", "bloqueo", "adjunto"})
        base->ejecutar(std::string("drop index ctcquorvel_") + indice); // made again over all rows at once
    base->ejecutar("drop index ctdquorvel_sumas");
    dbtools::Lote lote(*base);
    base->ejecutar(escribir(CUENTAS, p, 500));
    base->ejecutar(escribir(AUXILIARES, p, 50000));
    base->ejecutar(escribir(CABECERAS, p, comprobantes));
    base->ejecutar(escribir(LINEAS, p, comprobantes));
    lote.confirmar();
    (void)dbtools::afinar(conexion);
    base->ejecutar(p.despues);
}

Generado generado(const std::string& conexion, int numero) {
    const auto filas =
        dbtools::abrir_base(conexion, dbtools::Abrir::existente)
            ->consultar("select documento,num_docum,f_comp,rut_persona,num_ref from ctcquorvel "
                        "where comprobante_adjunto=" +
                        std::to_string(numero));
    if (filas.empty()) throw std::runtime_error("no generated voucher " + std::to_string(numero));
    const auto& f = filas.front();
    return {f[0], f[1], f[2], recortar(f[3]), recortar(f[4])};
}

} // namespace quorvel::bench
