#include "demo/demo_diario.h"

#include "dbtools/base.h"
#include "platform/db/literal.h"

namespace quorvel::demo {
namespace {

std::string fecha_sql(Fecha f) { return "'" + fecha_iso(f) + "'"; }
std::string numero_sql(std::int64_t n) { return std::to_string(n); }

/// "(a,b,c)"
std::string valores(std::initializer_list<std::string> partes) {
    std::string texto;
    for (const std::string& parte : partes) texto += (texto.empty() ? "(" : ",") + parte;
    return texto + ")";
}

std::string columnas_de_meses() {
    std::string texto;
    for (int m = 1; m <= 12; ++m) texto += ",debe" + std::to_string(m) + ",haber" + std::to_string(m);
    return texto;
}

template <class Meses> std::string valores_de_meses(const Meses& meses) {
    std::string texto;
    for (const std::int64_t n : meses) texto += "," + std::to_string(n);
    return texto;
}

/// Documents of the books are stored with one trailing blank, as the screen writes them.
std::string con_blanco(const std::string& texto) { return sql_texto(texto + " "); }

} // namespace

void DiarioDemo::acumular(const AsientoDemo& a, const LineaDemo& l) {
    const std::string referencia = l.auxiliar.empty() ? "" : l.num_ref.empty() ? a.num_ref : l.num_ref;
    saldos_[{l.centro, l.auxiliar, referencia}] += l.debe - l.haber;
    const std::size_t columna = static_cast<std::size_t>(mes(a.fecha) - 1) * 2;
    const auto sumar = [&](Meses& meses) {
        meses[columna] += l.debe;
        meses[columna + 1] += l.haber;
    };
    for (const std::size_t largo : {1U, 3U, 6U})
        sumar(por_centro_[{anio(a.fecha), l.centro.substr(0, largo)}]);
    if (!l.auxiliar.empty()) sumar(por_auxiliar_[{anio(a.fecha), l.centro, l.auxiliar}]);
}

void DiarioDemo::escribir_cabecera(const AsientoDemo& a, const std::string& numero, int correlativo,
                                   int usuario) {
    std::int64_t debe = 0, haber = 0;
    for (const LineaDemo& l : a.lineas) {
        debe += l.debe;
        haber += l.haber;
    }
    const std::string documento_dato = a.fecha_pago ? fecha_sql(a.fecha) : "null";
    const std::string pago = a.fecha_pago ? fecha_sql(*a.fecha_pago) : "null";
    const auto cheque = [&](const std::string& valor) { return a.cheque ? valor : "null"; };
    base_.ejecutar(
        "insert into "
        "ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,moneda,t_debe,t_haber,concepto,usuario,"
        "f_ult_modificacion,cotizacion,estado,libro,doc_libro,num_ref,fecha_factura,fecha_pago,rut_persona,"
        "nombre,"
        "apertura,monto_neto,monto_exento,codigo_otro_impuesto,tasa_impuesto_otro,activo_fijo,codigo_no_"
        "recuperable,"
        "ifrs,comprobante_adjunto,nro_correlativo,iva_activo_fijo,bloqueo_usuario,cheque,banco,cuenta,fecha_"
        "cheque,"
        "beneficiario,nominativo,cruzado) values " +
        valores({"1",
                 sql_texto(a.subsistema),
                 fecha_sql(a.fecha),
                 sql_texto(a.documento),
                 sql_texto(numero),
                 "'PS'",
                 numero_sql(debe),
                 numero_sql(haber),
                 sql_texto(a.concepto),
                 numero_sql(usuario),
                 fecha_sql(a.fecha),
                 "1",
                 sql_texto(a.estado),
                 sql_texto(a.libro),
                 sql_texto(a.doc_libro),
                 con_blanco(a.num_ref),
                 documento_dato,
                 pago,
                 con_blanco(a.rut),
                 con_blanco(a.nombre),
                 a.apertura ? "'1'" : "'0'",
                 numero_sql(a.neto),
                 numero_sql(a.exento),
                 sql_texto(a.codigo_impuesto),
                 sql_texto(a.tasa_impuesto),
                 a.activo_fijo ? "'1'" : "'0'",
                 "''",
                 sql_texto(a.ifrs),
                 numero_sql(++adjuntos_),
                 numero_sql(correlativo),
                 numero_sql(a.iva_activo_fijo),
                 "0",
                 cheque(a.cheque ? sql_texto(a.cheque->numero) : ""),
                 cheque("'BANCO DE CHILE'"),
                 cheque("'00-168-04521-07'"),
                 cheque(fecha_sql(a.fecha)),
                 cheque(a.cheque ? sql_texto(a.cheque->beneficiario) : ""),
                 cheque("1"),
                 cheque("1")}));
}

void DiarioDemo::escribir_linea(const AsientoDemo& a, const std::string& numero, int secuencia,
                                const LineaDemo& l) {
    base_.ejecutar(
        "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,centro,auxiliar,"
        "debe_nacional,haber_nacional,glosa,centro2,conciliado,num_ref,codigo_otro_impuesto,"
        "tasa_impuesto_otro) values " +
        valores({"1", sql_texto(a.subsistema), fecha_sql(a.fecha), sql_texto(a.documento), sql_texto(numero),
                 numero_sql(secuencia), sql_texto(l.centro), sql_texto(l.auxiliar), numero_sql(l.debe),
                 numero_sql(l.haber), sql_texto(a.concepto), sql_texto(l.centro2), sql_texto(l.conciliado),
                 sql_texto(l.num_ref), sql_texto(l.codigo_impuesto), sql_texto(l.tasa_impuesto)}));
}

std::string DiarioDemo::asentar(const AsientoDemo& a, int usuario) {
    const std::string numero = std::to_string(++numeros_[{anio(a.fecha), a.documento}]);
    const int correlativo = ++correlativos_[{anio(a.fecha), mes(a.fecha), a.libro}];
    escribir_cabecera(a, numero, correlativo, usuario);
    if (a.estado == "X") return numero; // annulled: the header stays, the lines are gone
    int secuencia = 0;
    for (const LineaDemo& l : a.lineas) {
        escribir_linea(a, numero, ++secuencia, l);
        acumular(a, l);
    }
    return numero;
}

std::int64_t DiarioDemo::saldo(const std::string& centro) const {
    std::int64_t suma = 0;
    for (auto i = saldos_.lower_bound({centro, "", ""});
         i != saldos_.end() && std::get<0>(i->first) == centro; ++i)
        suma += i->second;
    return suma;
}

std::map<std::string, int> DiarioDemo::ultimos(int anio) const {
    std::map<std::string, int> ultimos;
    for (const auto& [clave, numero] : numeros_)
        if (clave.first == anio) ultimos[clave.second] = numero;
    return ultimos;
}

void DiarioDemo::terminar() {
    for (const auto& [clave, meses] : por_centro_)
        base_.ejecutar("insert into ctmsdcenth(empresa,anio,centro" + columnas_de_meses() + ") values (1," +
                       std::to_string(clave.first) + "," + sql_texto(clave.second) + valores_de_meses(meses) +
                       ")");
    for (const auto& [clave, meses] : por_auxiliar_)
        base_.ejecutar("insert into ctmsdmayor(empresa,anio,centro,auxiliar" + columnas_de_meses() +
                       ") values (1," + std::to_string(std::get<0>(clave)) + "," +
                       sql_texto(std::get<1>(clave)) + "," + sql_texto(std::get<2>(clave)) +
                       valores_de_meses(meses) + ")");
}

} // namespace quorvel::demo
