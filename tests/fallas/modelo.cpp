#include "fallas/modelo.h"

#include "apoyo/sesiones.h"
#include "text/fecha.h"
#include "text/numeros.h"

#include <algorithm>
#include <regex>

namespace quorvel::fallas {

namespace {

int anio_de(const ClavePlana& clave) { return std::stoi(std::get<0>(clave)); }
bool de_resultado(const LineaPlana& l) { return l.cuenta[0] > '3'; }

} // namespace

void Modelo::desbloquear(int usuario) {
    for (auto& [clave, c] : comprobantes)
        if (c.bloqueo == usuario) c.bloqueo = 0;
}

void Modelo::bloquear(const ClavePlana& clave, int usuario) {
    const auto c = comprobantes.find(clave);
    if (c != comprobantes.end()) c->second.bloqueo = usuario;
}

std::int64_t Modelo::propuesto(const std::string& documento, const std::string& anio) const {
    std::int64_t mayor = 0;
    for (const auto& [clave, c] : comprobantes)
        if (std::get<1>(clave) == documento && std::get<0>(clave).starts_with(anio))
            mayor = std::max(mayor, val_entero(std::get<2>(clave)));
    return mayor + 1;
}

std::string Modelo::fuera(const PeriodoPlano& p, const ClavePlana& clave) const {
    if (anio_de(clave) > p.anio) return "Fecha fuera del período de digitacion, Máxima:";
    if (anio_de(clave) < p.anio) return "Fecha fuera del período de digitacion, Mínima:";
    if (!p.cierre || clave == *p.cierre || !vigente(*p.cierre)) return "";
    return "No se puede ingresar mas Comprobantes en el año " + std::to_string(p.anio);
}

bool Modelo::tiene_movimientos(int anio) const {
    return std::ranges::any_of(comprobantes, [&](const auto& par) {
        return anio_de(par.first) == anio && !par.second.lineas.empty();
    });
}

bool Modelo::vigente(const ClavePlana& clave) const {
    const auto c = comprobantes.find(clave);
    return c != comprobantes.end() && c->second.estado == "P";
}

LineaPlana Modelo::linea(const Saldos::key_type& cuenta, std::int64_t saldo) {
    return {cuenta.first, cuenta.second, std::max<std::int64_t>(saldo, 0), std::max<std::int64_t>(-saldo, 0)};
}

std::vector<LineaPlana> Modelo::cierre() const {
    Saldos resultados;
    for (const auto& [clave, c] : comprobantes)
        for (const LineaPlana& l : c.lineas)
            if (de_resultado(l)) resultados[{l.cuenta, l.auxiliar}] += l.debe - l.haber;
    std::vector<LineaPlana> lineas;
    std::int64_t total = 0;
    for (const auto& [cuenta, saldo] : resultados) {
        lineas.push_back(linea(cuenta, -saldo));
        total += saldo;
    }
    lineas.push_back(linea({total > 0 ? "302002" : "302001", ""}, total));
    return lineas;
}

bool Modelo::resultados_en_cero() const {
    const LineaPlana resultado = cierre().back();
    return resultado.debe == resultado.haber;
}

Modelo::Saldos Modelo::saldos(int anio, const std::string& norma) const {
    Saldos saldos;
    for (const auto& [clave, c] : comprobantes)
        if (anio_de(clave) == anio && (c.norma == "0" || c.norma == norma))
            for (const LineaPlana& l : c.lineas)
                if (!de_resultado(l) && !l.cuenta.starts_with("302"))
                    saldos[{l.cuenta, l.auxiliar}] += l.debe - l.haber;
    return saldos;
}

std::vector<LineaPlana> Modelo::apertura(int anio, const std::string& norma) const {
    std::vector<LineaPlana> lineas;
    std::int64_t resultado = 0;
    for (const auto& [cuenta, saldo] : saldos(anio - 1, norma)) {
        resultado -= saldo;
        if (saldo != 0) lineas.push_back(linea(cuenta, saldo));
    }
    lineas.push_back(linea({resultado > 0 ? "302002" : "302001", ""}, resultado));
    return lineas;
}

std::set<std::string> Modelo::aperturas_distintas() const {
    std::set<std::string> dichos;
    for (const auto& [clave, c] : comprobantes) {
        if (!c.apertura || c.estado != "P" || anio_de(clave) == PeriodoPlano{}.anio) continue;
        auto diferencias = saldos(anio_de(clave) - 1, c.norma);
        for (const LineaPlana& l : c.lineas)
            if (!l.cuenta.starts_with("302")) diferencias[{l.cuenta, l.auxiliar}] -= l.debe - l.haber;
        const auto& [fecha, documento, numero] = clave;
        for (const auto& [cuenta, diferencia] : diferencias)
            if (diferencia != 0)
                dichos.insert("Apertura distinta del cierre del año anterior: empresa 1, " +
                              fecha_dmy(*leer_fecha_iso(fecha)) + ", documento " + documento + ", Nro." +
                              numero + " (" + cuenta.first + ")");
    }
    return dichos;
}

std::string Modelo::texto() const {
    std::string cabeceras, lineas, adjuntos;
    const auto poner = [](std::string& en, const std::string& fila) { en += (en.empty() ? "" : ";") + fila; };
    for (const auto& [k, c] : comprobantes) {
        const std::string clave = std::get<0>(k) + "|" + std::get<1>(k) + "|" + std::get<2>(k) + "|";
        const std::string total = std::to_string(c.total);
        poner(cabeceras, clave + c.estado + "|" + total + "|" + total + "|" + c.concepto + "|" +
                             std::to_string(c.usuario) + "|" + std::to_string(c.bloqueo) + "|" + c.cheque +
                             "|" + (c.apertura ? "1" : "0") + "|" + c.norma);
        int n = 0;
        for (const LineaPlana& l : c.lineas)
            poner(lineas, clave + std::to_string(++n) + "|" + l.cuenta + "|" + l.auxiliar + "|" +
                              std::to_string(l.debe) + "|" + std::to_string(l.haber));
        for (const std::string& nombre : c.adjuntos) poner(adjuntos, clave + nombre);
    }
    std::string numeros;
    for (const auto& [documento, numero] : ultimo_emitido) poner(numeros, documento + "|" + numero);
    return cabeceras + "\n" + lineas + "\n" + adjuntos + "\n" + numeros + "\n" + std::to_string(saldo_caja) +
           "\n";
}

std::string Modelo::leer(clsConexion& db) {
    const char* const consultas[] = {
        "f_comp,documento,num_docum,estado,t_debe,t_haber,concepto,usuario,"
        "coalesce(bloqueo_usuario,0),cheque,val(apertura),ifrs from ctcquorvel order by "
        "f_comp,documento,num_docum",
        "f_comp,documento,num_docum,secuencia,centro,auxiliar,debe_nacional,haber_nacional from ctdquorvel"
        " order by f_comp,documento,num_docum,secuencia",
        "c.f_comp,c.documento,c.num_docum,a.nombre from ctcquorvel c, ctdcomprad a where"
        " a.comprobante_adjunto=c.comprobante_adjunto order by "
        "c.f_comp,c.documento,c.num_docum,a.correlativo",
        "documento,ultimo_emitido from adxemp_doc order by documento",
        "debe6 - haber6 from ctmsdcenth where centro='101001'"};
    std::string todo;
    for (const char* consulta : consultas) todo += apoyo::filas(db, std::string("select ") + consulta) + "\n";
    static const std::regex relleno(" +(?=[|;\n])"); // another program's texts are padded
    return std::regex_replace(todo, relleno, "");
}

} // namespace quorvel::fallas
