#include "libros/balance.h"

#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel::libros {
namespace {

using Columna = std::int64_t LineaBalance::*;
constexpr Columna COLUMNAS[] = {&LineaBalance::debitos,  &LineaBalance::creditos, &LineaBalance::deudor,
                                &LineaBalance::acreedor, &LineaBalance::activo,   &LineaBalance::pasivo,
                                &LineaBalance::perdida,  &LineaBalance::ganancia};

void repartir(LineaBalance& l, bool de_resultado) {
    const std::int64_t saldo = l.debitos - l.creditos;
    l.deudor = std::max<std::int64_t>(saldo, 0);
    l.acreedor = std::max<std::int64_t>(-saldo, 0);
    (de_resultado ? l.perdida : l.activo) = l.deudor;
    (de_resultado ? l.ganancia : l.pasivo) = l.acreedor;
}

} // namespace

void armar_balance(Balance& b, const std::vector<bool>& de_resultado) {
    b.sumas = {"", "Sumas"};
    for (std::size_t i = 0; i < b.cuentas.size(); ++i) {
        repartir(b.cuentas[i], de_resultado[i]);
        for (const Columna c : COLUMNAS) b.sumas.*c += b.cuentas[i].*c;
    }
    const std::int64_t utilidad = b.sumas.ganancia - b.sumas.perdida;
    b.resultado = {"", utilidad < 0 ? "Pérdida del ejercicio" : "Utilidad del ejercicio"};
    (utilidad < 0 ? b.resultado.activo : b.resultado.pasivo) = std::abs(utilidad);
    (utilidad < 0 ? b.resultado.ganancia : b.resultado.perdida) = std::abs(utilidad);
    b.totales = b.sumas;
    b.totales.nombre = "Totales";
    for (const Columna c : COLUMNAS) b.totales.*c += b.resultado.*c;
}

Balance leer_balance(clsConexion& db, const PedidoLibro& p) {
    const auto norma = libros::filtro_norma(p);
    const std::string sql =
        "select s.centro, m.n_centro, g.transitorio, s.debe, s.haber, m.centro as en_plan from (select "
        "a.centro, sum(a.debe_nacional) as debe, sum(a.haber_nacional) as haber from ctdquorvel a" +
        norma.tabla + " where" + libros::condicion_lineas(db, p, p.desde) + norma.condicion +
        " group by a.centro) s left join ctmcentros m on m.centro=s.centro left join ctmgcuenta g on "
        "g.g_cuenta=m.g_cuenta order by s.centro";
    Balance b;
    std::vector<bool> de_resultado;
    for (const auto rs = db.NewRecord(sql); !rs->eof(); rs->MoveNext()) {
        LineaBalance l{recortar_fin(rs->at(0).text()), recortar_fin(rs->at(1).text())};
        l.debitos = rs->at(3).integer();
        l.creditos = rs->at(4).integer();
        if (rs->at(5).null()) b.sin_cuenta.push_back(l.centro);
        de_resultado.push_back(recortar(rs->at(2).text()) == "1");
        b.cuentas.push_back(std::move(l));
    }
    armar_balance(b, de_resultado);
    return b;
}

std::vector<std::int64_t> columnas_balance(const LineaBalance& l) {
    std::vector<std::int64_t> montos;
    for (const Columna c : COLUMNAS) montos.push_back(l.*c);
    return montos;
}

const std::vector<std::string>& titulos_balance() {
    static const std::vector<std::string> TITULOS = {"Débitos", "Créditos", "Deudor",  "Acreedor",
                                                     "Activo",  "Pasivo",   "Pérdida", "Ganancia"};
    return TITULOS;
}

std::string balance_csv(const Balance& b) {
    std::string texto = "Cuenta;Nombre";
    for (const std::string& t : titulos_balance()) texto += ";" + t;
    texto += "\n";
    const auto fila = [&](const LineaBalance& l) {
        texto += celda_csv(l.centro) + ";" + celda_csv(l.nombre);
        for (const std::int64_t monto : columnas_balance(l)) texto += ";" + std::to_string(monto);
        texto += "\n";
    };
    for (const LineaBalance& l : b.cuentas) fila(l);
    for (const LineaBalance* l : {&b.sumas, &b.resultado, &b.totales}) fila(*l);
    return texto;
}

} // namespace quorvel::libros
