#include "dbtools/revisar.h"

#include "dbtools/base.h"
#include "dbtools/datos.h"
#include "dbtools/guion.h"
#include "historia/cadena.h"
#include "historia/comenzar.h"
#include "historia/guardados.h"
#include "platform/db/clsConexion.h"
#include "platform/files/attachments.h"

#include <algorithm>
#include <map>
#include <set>

namespace quorvel::dbtools {
namespace {

/// One contradiction to look for. A row is empresa, f_comp, documento, num_docum and one detail, or, when the
/// query has one column, the detail alone.
struct Revision {
    const char* titulo;
    const char* sql;
};

// Correlated subqueries on purpose: each is a point query on the lines' key, on both engines.
constexpr Revision REVISIONES[] = {
    {"Comprobante descuadrado",
     "select empresa, f_comp, documento, num_docum, sum(debe_nacional) - sum(haber_nacional) from ctdquorvel"
     " group by empresa, f_comp, documento, num_docum having sum(debe_nacional) <> sum(haber_nacional)"},
    {"Totales distintos de la suma del detalle",
     "select empresa, f_comp, documento, num_docum, '' from ctcquorvel c where estado='P' and ("
     " t_debe <> (select coalesce(sum(debe_nacional),0) from ctdquorvel d where d.empresa=c.empresa"
     "  and d.f_comp=c.f_comp and d.documento=c.documento and d.num_docum=c.num_docum) or"
     " t_haber <> (select coalesce(sum(haber_nacional),0) from ctdquorvel d where d.empresa=c.empresa"
     "  and d.f_comp=c.f_comp and d.documento=c.documento and d.num_docum=c.num_docum))"},
    {"Numero de comprobante repetido",
     "select empresa, f_comp, documento, num_docum, count(*) from ctcquorvel"
     " group by empresa, f_comp, documento, num_docum having count(*) > 1"},
    {"Comprobante anulado con detalle",
     "select empresa, f_comp, documento, num_docum, '' from ctcquorvel c where estado='X' and exists (select "
     "1"
     " from ctdquorvel d where d.empresa=c.empresa and d.f_comp=c.f_comp and d.documento=c.documento"
     " and d.num_docum=c.num_docum)"},
    {"Detalle sin comprobante",
     "select distinct empresa, f_comp, documento, num_docum, '' from ctdquorvel d where not exists (select 1"
     " from ctcquorvel c where c.empresa=d.empresa and c.f_comp=d.f_comp and c.documento=d.documento"
     " and c.num_docum=d.num_docum and c.subsistema=d.subsistema)"},
    {"Detalle con cuenta que no existe",
     "select empresa, f_comp, documento, num_docum, centro from ctdquorvel d where not exists (select 1"
     " from ctmcentros a where a.centro=d.centro)"},
    {"Detalle con cuenta sin grupo",
     "select empresa, f_comp, documento, num_docum, centro from ctdquorvel d where exists (select 1"
     " from ctmcentros a where a.centro=d.centro and not exists (select 1 from ctmgcuenta g"
     " where g.g_cuenta=a.g_cuenta))"},
    {"Detalle sin el auxiliar que exige la cuenta",
     "select empresa, f_comp, documento, num_docum, centro from ctdquorvel d where coalesce(auxiliar,'')='' "
     "and "
     "exists (select 1"
     " from ctmcentros a where a.centro=d.centro and trim(a.req_auxiliar)='1')"},
    {"Detalle con auxiliar que no existe", "select empresa, f_comp, documento, num_docum, auxiliar from "
                                           "ctdquorvel d where auxiliar<>'' and not exists"
                                           " (select 1 from ctxaux_cod x where x.auxiliar=d.auxiliar)"},
    {"Estado desconocido", "select empresa, f_comp, documento, num_docum, estado from ctcquorvel where "
                           "estado not in ('P','T','X')"},
    {"Tipo de documento que no existe",
     "select distinct documento from ctcquorvel c where not exists (select 1 from admdocumen d"
     " where d.documento=c.documento)"},
    {"Comprobante bloqueado por un usuario que no existe",
     "select empresa, f_comp, documento, num_docum, bloqueo_usuario from ctcquorvel c"
     " where bloqueo_usuario<>0 and not exists (select 1 from admusuario u where "
     "u.usuario=c.bloqueo_usuario)"},
    {"Conjunto de adjuntos de varios comprobantes",
     "select comprobante_adjunto from ctcquorvel where comprobante_adjunto<>0"
     " group by comprobante_adjunto having count(*) > 1"},
    {"Adjuntos sin comprobante",
     "select distinct comprobante_adjunto from ctdcomprad a where comprobante_adjunto<>0 and not exists"
     " (select 1 from ctcquorvel c where c.comprobante_adjunto=a.comprobante_adjunto)"},
    {"Detalle de factura sin factura",
     "select distinct factura from ftdfactura d where not exists (select 1 from ftcfactura f"
     " where f.empresa=d.empresa and cast(f.factura as char(20))=cast(d.factura as char(20)))"},
    // An opening carries what the closed year before it left, per norm: 0 counts for both.
    {"Apertura distinta del cierre del año anterior",
     "with aperturas as (select c.empresa, c.f_comp, c.documento, c.num_docum, c.ifrs, k.anio"
     " from ctcquorvel c join ctmconfigu k on k.empresa=c.empresa and k.f_comp_cierre is not null"
     "  and k.anio=cast(substr(cast(c.f_comp as char(10)),1,4) as integer) - 1"
     " where c.apertura='1' and c.estado='P')"
     " select empresa, f_comp, documento, num_docum, centro from ("
     " select h.empresa, h.f_comp, h.documento, h.num_docum, d.centro, rtrim(coalesce(d.auxiliar,'')) as "
     "auxiliar,"
     "  d.debe_nacional - d.haber_nacional as saldo"
     " from aperturas h join ctdquorvel d on d.empresa=h.empresa and d.f_comp=h.f_comp"
     "  and d.documento=h.documento and d.num_docum=h.num_docum"
     " union all"
     " select h.empresa, h.f_comp, h.documento, h.num_docum, d.centro, rtrim(coalesce(d.auxiliar,'')),"
     "  d.haber_nacional - d.debe_nacional"
     " from aperturas h join ctcquorvel p on p.empresa=h.empresa"
     "  and cast(substr(cast(p.f_comp as char(10)),1,4) as integer)=h.anio and coalesce(p.ifrs,'0') in ('0', "
     "h.ifrs)"
     " join ctdquorvel d on d.empresa=p.empresa and d.f_comp=p.f_comp and d.documento=p.documento"
     "  and d.num_docum=p.num_docum"
     " join ctmcentros a on a.centro=d.centro join ctmgcuenta g on g.g_cuenta=a.g_cuenta"
     "  and g.transitorio='0') s"
     " where centro not in (select coalesce(centro_gan,'') from ctmconfigu union"
     "  select coalesce(centro_per,'') from ctmconfigu)"
     " group by empresa, f_comp, documento, num_docum, centro, auxiliar having sum(saldo) <> 0"},
};
constexpr std::size_t MAXIMO = 50; // a spoiled import must not bury the other findings

std::string minuscula(std::string texto) {
    std::transform(texto.begin(), texto.end(), texto.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return texto;
}

std::set<std::string> nombres(const Base::Filas& filas) {
    std::set<std::string> conjunto;
    for (const auto& fila : filas) conjunto.insert(minuscula(fila[0]));
    return conjunto;
}

Esquema esquema_de(const Base& base) { return leer_esquema(leer_dato("schema/" + base.motor() + ".sql")); }

/// A database of another program works without them.
bool de_historia(const Tabla& t) { return t.nombre.ends_with("historia"); }

/// @return whether every table and column of the vouchers is there, so that the data can be read at all
bool revisar_tablas(Base& base, const Esquema& esquema, std::vector<std::string>& hallazgos) {
    const Base::Filas existentes = base.columnas();
    const std::set<std::string> tablas = nombres(existentes);
    std::set<std::string> columnas;
    for (const auto& fila : existentes) columnas.insert(minuscula(fila[0] + "." + fila[1]));
    bool completa = true;
    for (const Tabla& tabla : esquema.tablas) {
        if (!tablas.count(tabla.nombre)) {
            hallazgos.push_back("Falta la tabla " + tabla.nombre +
                                (de_historia(tabla) ? "; db tune la crea" : ""));
            completa = completa && de_historia(tabla);
            continue;
        }
        const std::size_t antes = hallazgos.size();
        for (const std::string& columna : tabla.columnas)
            if (!columnas.count(tabla.nombre + "." + columna))
                hallazgos.push_back("Falta la columna " + columna + " de la tabla " + tabla.nombre);
        completa = completa && hallazgos.size() == antes;
    }
    return completa;
}

std::string describir(const char* titulo, const std::vector<std::string>& fila) {
    if (fila.size() == 1) return titulo + (": " + fila[0]);
    const std::string& f = fila[1];
    const std::string fecha =
        f.size() >= 10 ? f.substr(8, 2) + "/" + f.substr(5, 2) + "/" + f.substr(0, 4) : f;
    std::string texto = titulo;
    texto += ": empresa " + fila[0] + ", " + fecha + ", documento " + fila[2] + ", Nro." + fila[3];
    return fila[4].empty() ? texto : texto + " (" + fila[4] + ")";
}

void anotar(const char* titulo, const Base::Filas& filas, std::vector<std::string>& hallazgos) {
    for (std::size_t i = 0; i < std::min(filas.size(), MAXIMO); ++i)
        hallazgos.push_back(describir(titulo, filas[i]));
    if (filas.size() > MAXIMO)
        hallazgos.push_back(std::string(titulo) + ": " + std::to_string(filas.size() - MAXIMO) + " más");
}

void revisar_datos(Base& base, std::vector<std::string>& hallazgos) {
    for (const Revision& revision : REVISIONES)
        anotar(revision.titulo, base.consultar(revision.sql), hallazgos);
}

std::vector<Indice> indices_faltantes(Base& base, const Esquema& esquema) {
    const std::set<std::string> existentes = nombres(base.indices()), tablas = nombres(base.columnas());
    std::vector<Indice> faltantes;
    std::copy_if(esquema.indices.begin(), esquema.indices.end(), std::back_inserter(faltantes),
                 [&](const Indice& i) {
                     return !existentes.count(i.nombre) &&
                            (tablas.count("ctdhistoria") || !i.nombre.starts_with("ctdhistoria"));
                 });
    return faltantes;
}

/// Tables of a database that was made when some of their columns refused null, with those columns.
std::map<std::string, std::vector<std::string>> por_relajar(Base& base, const Esquema& esquema) {
    std::set<std::string> obligatorias;
    for (const auto& fila : base.obligatorias()) obligatorias.insert(minuscula(fila[0] + "." + fila[1]));
    std::map<std::string, std::vector<std::string>> tablas;
    for (const Tabla& tabla : esquema.tablas)
        for (const std::string& columna : tabla.anulables)
            if (obligatorias.contains(tabla.nombre + "." + columna)) tablas[tabla.nombre].push_back(columna);
    return tablas;
}

/// @return whether the tables were missing
bool crear_historia(Base& base, const Esquema& esquema) {
    const std::set<std::string> tablas = nombres(base.columnas());
    bool creadas = false;
    for (const Tabla& tabla : esquema.tablas) {
        if (!de_historia(tabla) || tablas.contains(tabla.nombre)) continue;
        base.ejecutar(tabla.sentencia);
        creadas = true;
    }
    return creadas;
}

std::vector<int> empresas(clsConexion& db) {
    std::vector<int> todas;
    for (const auto rs = db.NewRecord("select empresa from admempresa order by empresa"); !rs->eof();
         rs->MoveNext())
        todas.push_back(static_cast<int>(rs->at(0).integer()));
    return todas;
}

/// The first break of each company's chain, and vouchers that are not as their last version says.
void revisar_historia(Base& base, const std::string& conexion, std::vector<std::string>& hallazgos) {
    if (!nombres(base.columnas()).contains("ctmhistoria")) return;
    const auto db = abrir_sesion(normalizar_conexion(conexion));
    for (const int empresa : empresas(*db)) {
        const std::string de = "Historia de la empresa " + std::to_string(empresa);
        if (const auto rota = romper_cadena(*db, empresa)) hallazgos.push_back(de + ": " + *rota);
        Base::Filas distintos;
        comparar_con_historia(*db, empresa, [&](const std::string& d) { distintos.push_back({d}); });
        anotar(de.c_str(), distintos, hallazgos);
    }
}

long comenzar_historias(const std::string& conexion) {
    const auto db = abrir_sesion(normalizar_conexion(conexion));
    long versiones = 0;
    for (const int empresa : empresas(*db)) {
        Transaccion t(*db);
        versiones += comenzar_historia(*db, empresa, 0);
        t.confirmar();
    }
    return versiones;
}

} // namespace

std::vector<std::string> revisar_adjuntos(Base& base, const Attachments& archivos) {
    Base::Filas faltan;
    for (const auto& fila : base.consultar(
             "select c.empresa, c.f_comp, c.documento, c.num_docum, a.nombre, a.comprobante_adjunto"
             " from ctcquorvel c, ctdcomprad a where a.comprobante_adjunto=c.comprobante_adjunto"
             " and a.comprobante_adjunto<>0"))
        if (!archivos.find(fila[5], fila[4])) faltan.push_back(fila);
    std::vector<std::string> hallazgos;
    anotar("Archivo adjunto que no está", faltan, hallazgos);
    return hallazgos;
}

std::vector<std::string> revisar(const std::string& conexion, const std::filesystem::path& adjuntos) {
    const auto base = abrir_base(conexion, Abrir::existente);
    const Esquema esquema = esquema_de(*base);
    std::vector<std::string> hallazgos;
    const bool completa = revisar_tablas(*base, esquema, hallazgos);
    for (const Indice& indice : indices_faltantes(*base, esquema))
        hallazgos.push_back("Falta el índice " + indice.nombre);
    for (const auto& [tabla, columnas] : por_relajar(*base, esquema))
        hallazgos.push_back("La tabla " + tabla +
                            " no admite filas de otros programas con columnas sin llenar");
    if (completa) revisar_datos(*base, hallazgos);
    if (completa) revisar_historia(*base, conexion, hallazgos);
    if (completa && !adjuntos.empty())
        for (std::string& falta : revisar_adjuntos(*base, {adjuntos, attachment_database(conexion)}))
            hallazgos.push_back(std::move(falta));
    return hallazgos;
}

Afinado afinar(const std::string& conexion) {
    const auto base = abrir_base(conexion, Abrir::existente);
    const Esquema esquema = esquema_de(*base);
    Afinado hecho;
    std::string rechazados;
    for (const auto& [tabla, columnas] : por_relajar(*base, esquema)) base->relajar(tabla, columnas);
    hecho.historia = crear_historia(*base, esquema);
    for (const Indice& indice : indices_faltantes(*base, esquema)) {
        try {
            base->ejecutar(indice.sentencia);
            ++hecho.indices;
        } catch (const ErrorSesion& e) { // clashing numbers of an old database; the other indexes still help
            rechazados += "\nNo se pudo crear el índice " + indice.nombre + ": " + e.what();
        }
    }
    if (hecho.historia) hecho.versiones = comenzar_historias(conexion);
    base->ejecutar("analyze");
    if (!rechazados.empty()) throw ErrorSesion(rechazados.substr(1), {});
    return hecho;
}

std::vector<std::string> revisar_codigo(const std::string& conexion, const std::string& codigo) {
    std::string mal = comparar_codigo(*abrir_sesion(normalizar_conexion(conexion)), codigo);
    return mal.empty() ? std::vector<std::string>{} : std::vector{std::move(mal)};
}

} // namespace quorvel::dbtools
