#include "libros/pendientes.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>
#include <map>

namespace quorvel::libros {
namespace {

using Que = Pendiente::Que;
using Meses = std::array<MesRevisado, 12>;

std::string del_anio(int empresa, int anio) {
    using namespace std::chrono;
    return " where empresa=" + sql_numero(empresa) + " and f_comp between " + sql_fecha(year{anio} / 1 / 1) +
           " and " + sql_fecha(year{anio} / 12 / 31);
}

MesRevisado& mes_de(Meses& meses, Fecha f) { return meses[static_cast<std::size_t>(mes(f) - 1)]; }

Posicion posicion(Recordset& rs) {
    return {rs.at(0).date().value_or(Fecha{}), recortar_fin(rs.at(1).text()), recortar_fin(rs.at(2).text())};
}

void anotar(Meses& meses, Que que, const Posicion& donde, std::string detalle) {
    mes_de(meses, donde.f_comp).pendientes.push_back({que, donde, std::move(detalle)});
}

void descuadrados(clsConexion& db, const std::string& donde, Meses& meses) {
    const auto rs = db.NewRecord("select f_comp, documento, num_docum, sum(debe_nacional)-sum(haber_nacional)"
                                 " from ctdquorvel" +
                                 donde +
                                 " group by f_comp, documento, num_docum"
                                 " having sum(debe_nacional)<>sum(haber_nacional)");
    for (; !rs->eof(); rs->MoveNext()) {
        const std::int64_t diferencia = rs->at(3).integer();
        anotar(meses, Que::descuadrado, posicion(*rs),
               (diferencia > 0 ? "falta Haber " : "falta Debe ") +
                   Decimal(std::abs(diferencia)).formato("#,##0"));
    }
}

struct Numero {
    std::int64_t n;
    Posicion donde;
};

std::string faltan(std::int64_t primero, std::int64_t ultimo) {
    const std::string desde = std::to_string(primero);
    return primero == ultimo ? "falta el " + desde : "faltan del " + desde + " al " + std::to_string(ultimo);
}

void huecos(std::vector<Numero>& numeros, Meses& meses) {
    std::ranges::sort(numeros, {}, &Numero::n);
    for (std::size_t i = 1; i < numeros.size(); ++i)
        if (numeros[i].n > numeros[i - 1].n + 1)
            anotar(meses, Que::falta_numero, numeros[i].donde,
                   faltan(numeros[i - 1].n + 1, numeros[i].n - 1));
}

void cabeceras(clsConexion& db, const std::string& donde, Meses& meses) {
    std::map<std::string, std::vector<Numero>> por_documento;
    const auto rs =
        db.NewRecord("select f_comp, documento, num_docum, estado, concepto from ctcquorvel" + donde);
    for (; !rs->eof(); rs->MoveNext()) {
        const Posicion p = posicion(*rs);
        ++mes_de(meses, p.f_comp).comprobantes;
        if (recortar(rs->at(3).text()) == "T")
            anotar(meses, Que::sin_terminar, p, recortar(rs->at(4).text()));
        if (const std::int64_t n = val_entero(p.num_docum); n > 0)
            por_documento[p.documento].push_back({n, p});
    }
    for (auto& [documento, numeros] : por_documento) huecos(numeros, meses);
}

} // namespace

std::array<MesRevisado, 12> revisar_meses(clsConexion& db, int empresa, int anio) {
    Meses meses;
    const std::string donde = del_anio(empresa, anio);
    descuadrados(db, donde, meses);
    cabeceras(db, donde, meses);
    for (MesRevisado& m : meses)
        std::ranges::stable_sort(m.pendientes, {}, [](const Pendiente& p) { return p.donde.f_comp; });
    return meses;
}

} // namespace quorvel::libros
