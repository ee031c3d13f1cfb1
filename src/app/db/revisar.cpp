#include "app/db/revisar.h"

#include "app/db/base.h"
#include "app/db/datos.h"
#include "app/db/guion.h"
#include "platform/db/clsConexion.h"

#include <algorithm>
#include <set>

namespace quorvel {
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
     "select empresa, f_comp, documento, num_docum, centro from ctdquorvel d where auxiliar='' and exists "
     "(select 1"
     " from ctmcentros a where a.centro=d.centro and a.req_auxiliar='1')"},
    {"Detalle con auxiliar que no existe", "select empresa, f_comp, documento, num_docum, auxiliar from "
                                           "ctdquorvel d where auxiliar<>'' and not exists"
                                           " (select 1 from ctxaux_cod x where x.auxiliar=d.auxiliar)"},
    {"Estado desconocido", "select empresa, f_comp, documento, num_docum, estado from ctcquorvel where "
                           "estado not in ('P','T','X')"},
    {"Tipo de documento que no existe",
     "select distinct documento from ctcquorvel c where not exists (select 1 from admdocumen d"
     " where d.documento=c.documento)"},
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

/// @return whether every table and column is there, so that the data can be read at all
bool revisar_tablas(Base& base, const Esquema& esquema, std::vector<std::string>& hallazgos) {
    const Base::Filas existentes = base.columnas();
    const std::set<std::string> tablas = nombres(existentes);
    std::set<std::string> columnas;
    for (const auto& fila : existentes) columnas.insert(minuscula(fila[0] + "." + fila[1]));
    const std::size_t antes = hallazgos.size();
    for (const Tabla& tabla : esquema.tablas) {
        if (!tablas.count(tabla.nombre)) {
            hallazgos.push_back("Falta la tabla " + tabla.nombre);
            continue;
        }
        for (const std::string& columna : tabla.columnas)
            if (!columnas.count(tabla.nombre + "." + columna))
                hallazgos.push_back("Falta la columna " + columna + " de la tabla " + tabla.nombre);
    }
    return hallazgos.size() == antes;
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

void revisar_datos(Base& base, std::vector<std::string>& hallazgos) {
    for (const Revision& revision : REVISIONES) {
        const Base::Filas filas = base.consultar(revision.sql);
        for (std::size_t i = 0; i < std::min(filas.size(), MAXIMO); ++i)
            hallazgos.push_back(describir(revision.titulo, filas[i]));
        if (filas.size() > MAXIMO)
            hallazgos.push_back(std::string(revision.titulo) + ": " + std::to_string(filas.size() - MAXIMO) +
                                " más");
    }
}

std::vector<Indice> indices_faltantes(Base& base, const Esquema& esquema) {
    const std::set<std::string> existentes = nombres(base.indices());
    std::vector<Indice> faltantes;
    std::copy_if(esquema.indices.begin(), esquema.indices.end(), std::back_inserter(faltantes),
                 [&](const Indice& i) { return !existentes.count(i.nombre); });
    return faltantes;
}

} // namespace

std::vector<std::string> revisar(const std::string& conexion) {
    const auto base = abrir_base(conexion, Abrir::existente);
    const Esquema esquema = esquema_de(*base);
    std::vector<std::string> hallazgos;
    const bool completa = revisar_tablas(*base, esquema, hallazgos);
    for (const Indice& indice : indices_faltantes(*base, esquema))
        hallazgos.push_back("Falta el índice " + indice.nombre);
    if (completa) revisar_datos(*base, hallazgos);
    return hallazgos;
}

int afinar(const std::string& conexion) {
    const auto base = abrir_base(conexion, Abrir::existente);
    int creados = 0;
    std::string rechazados;
    for (const Indice& indice : indices_faltantes(*base, esquema_de(*base))) {
        try {
            base->ejecutar(indice.sentencia);
            ++creados;
        } catch (const ErrorSesion& e) { // clashing numbers of an old database; the other indexes still help
            rechazados += "\nNo se pudo crear el índice " + indice.nombre + ": " + e.what();
        }
    }
    base->ejecutar("analyze");
    if (!rechazados.empty()) throw ErrorSesion(rechazados.substr(1), {});
    return creados;
}

} // namespace quorvel
