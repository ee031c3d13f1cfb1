#include "voucher/cargar.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/grabar_sql.h"
#include "voucher/huella.h"

namespace quorvel {
namespace {

constexpr const char* LINEAS =
    "secuencia, centro, auxiliar,  debe_nacional, haber_nacional, glosa, centro2, conciliado, num_ref ,"
    " codigo_otro_impuesto, tasa_impuesto_otro   from ctdquorvel ";

/// Other programs store fractions where the column lets them.
Decimal pesos(const Value& v) { return v.decimal().redondeado(); }

std::optional<Comprobante::Cheque> leer_cheque(Recordset& rs) {
    const auto valor = [&](const char* columna) { return rs.fields(columna).Value; };
    bool tiene = false;
    for (const char* columna : {"cheque", "banco", "cuenta", "fecha_cheque", "beneficiario"})
        tiene = tiene || !valor(columna).null();
    if (!tiene) return std::nullopt;
    return Comprobante::Cheque{valor("cheque").text(),
                               valor("banco").text(),
                               valor("cuenta").text(),
                               valor("beneficiario").text(),
                               valor("fecha_cheque").date(),
                               static_cast<int>(valor("nominativo").integer()),
                               static_cast<int>(valor("cruzado").integer())};
}

} // namespace

Comprobante leer_cabecera(Recordset& rs) {
    const auto valor = [&](const char* columna) { return rs.fields(columna).Value; };
    const auto recortado = [&](const char* columna) { return recortar(valor(columna).text()); };
    const auto numero = [&](const char* columna) { return static_cast<int>(valor(columna).integer()); };
    Comprobante c;
    c.empresa = numero("empresa");
    c.subsistema = valor("subsistema").text();
    c.f_comp = valor("f_comp").date();
    c.documento = valor("documento").text();
    c.num_docum = valor("num_docum").text();
    c.moneda = valor("moneda").text();
    c.concepto = valor("concepto").text();
    c.usuario = numero("usuario");
    c.cotizacion = valor("cotizacion").decimal();
    c.estado = recortado("estado");
    c.libro = recortar_fin(valor("libro").text());
    c.doc_libro = recortar_fin(valor("doc_libro").text());
    if (c.doc_libro.empty()) c.doc_libro = " ";
    c.num_ref = recortado("num_ref");
    c.fecha_factura = valor("fecha_factura").date();
    c.fecha_pago = valor("fecha_pago").date();
    c.rut_persona = recortado("rut_persona");
    c.nombre = recortado("nombre");
    c.apertura = numero("apertura") != 0;
    c.monto_neto = valor("monto_neto").decimal();
    c.monto_exento = valor("monto_exento").decimal();
    c.codigo_otro_impuesto = recortado("codigo_otro_impuesto");
    c.tasa_impuesto_otro = recortado("tasa_impuesto_otro");
    c.activo_fijo = numero("activo_fijo") != 0;
    c.codigo_no_recuperable = recortado("codigo_no_recuperable");
    c.ifrs = valor("ifrs").null() ? "0" : recortado("ifrs");
    c.comprobante_adjunto = valor("comprobante_adjunto").integer();
    c.nro_correlativo = valor("nro_correlativo").integer();
    c.iva_activo_fijo = valor("iva_activo_fijo").integer();
    c.totales = {pesos(valor("t_debe")), pesos(valor("t_haber"))};
    c.f_ult_modificacion = valor("f_ult_modificacion").date();
    c.bloqueo_usuario = valor("bloqueo_usuario").integer();
    c.cheque = leer_cheque(rs);
    return c;
}

std::string consulta_busqueda(int empresa, int usuario, int alias) {
    std::string sql = "select * from ctcQuorvel where empresa=" + sql_numero(empresa);
    if (alias == 2) sql += " and usuario=" + sql_numero(usuario);
    return sql;
}

std::optional<Fecha> fecha_de_los_ultimos(clsConexion& db, const std::string& consulta, int cuantos) {
    const auto rs = db.NewRecord("select f_comp from (" + consulta +
                                 ") q order by f_comp desc limit 1 offset " + sql_numero(cuantos));
    return rs->eof() ? std::nullopt : rs->at(0).date();
}

std::optional<Comprobante> leer_cabecera(clsConexion& db, int empresa, Fecha f_comp,
                                         const std::string& documento, const std::string& num_docum,
                                         const std::string& subsistema) {
    std::string sql =
        "select * from ctcQuorvel " + sql_clave_corta({empresa, subsistema, f_comp, documento, num_docum});
    if (!subsistema.empty()) sql += " and subsistema=" + sql_texto(subsistema);
    const auto rs = db.NewRecord(sql);
    if (rs->eof()) return std::nullopt;
    return leer_cabecera(*rs);
}

std::optional<Guardado> leer_guardado(clsConexion& db, const Clave& clave) {
    const auto rs = db.NewRecord("select * from ctcQuorvel " + sql_clave(clave));
    if (rs->eof()) return std::nullopt;
    return Guardado{leer_cabecera(*rs), huella_guardada(db, *rs, clave)};
}

std::string consulta_lineas(const Clave& clave) {
    return "select " + std::string(LINEAS) + sql_clave(clave) + " order by secuencia";
}

std::string consulta_contenido(const Clave& clave, std::int64_t conjunto) {
    const std::string lineas = "select 1 as parte, " + std::string(LINEAS) + sql_clave(clave);
    const std::string orden = " order by parte, secuencia";
    if (conjunto <= 0) return lineas + orden; // rows of set 0 are nobody's
    return lineas +
           " union all select 2, correlativo, nombre, '', 0, 0, '', '', '', '', '', '' from ctdcomprad"
           " where comprobante_adjunto=" +
           sql_numero(conjunto) + orden;
}

Linea leer_linea(Recordset& rs, std::size_t desde) {
    const auto texto = [&](std::size_t i) { return recortar_fin(sin_controles(rs.at(desde + i).text())); };
    return {texto(0),
            texto(1),
            pesos(rs.at(desde + 2)),
            pesos(rs.at(desde + 3)),
            texto(4),
            texto(5),
            texto(6),
            texto(7),
            texto(8),
            reemplazar(texto(9), ".", ",")};
}

std::vector<Linea> leer_lineas(clsConexion& db, const Clave& clave) {
    std::vector<Linea> lineas;
    for (const auto rs = db.NewRecord(consulta_lineas(clave)); !rs->eof(); rs->MoveNext())
        lineas.push_back(leer_linea(*rs, 1));
    return lineas;
}

bool ExisteComprobante(clsConexion& db, const Clave& k) {
    try {
        return !db.NewRecord("select * from ctcQuorvel  where empresa=" + sql_numero(k.empresa) +
                             " and year(f_comp) =" + sql_numero(anio(k.f_comp)) + " and month(f_comp) =" +
                             sql_numero(mes(k.f_comp)) + " and day(f_comp) =" + sql_numero(dia(k.f_comp)) +
                             " and documento=" + sql_texto(k.documento) +
                             " and num_docum=" + sql_texto(k.num_docum))
                    ->eof();
    } catch (const ErrorSesion&) {
        return false; // the unique key stops a second voucher all the same
    }
}

std::vector<std::string> leer_adjuntos(clsConexion& db, const std::string& conjunto) {
    std::vector<std::string> nombres;
    const std::int64_t n = val_entero(conjunto);
    if (n <= 0) return nombres;
    for (const auto rs = db.NewRecord("select * from ctdcomprad where comprobante_adjunto=" + sql_numero(n) +
                                      " order by correlativo");
         !rs->eof(); rs->MoveNext())
        nombres.push_back(rs->fields("nombre").Value.text());
    return nombres;
}

std::string numero_adjunto(clsConexion& db, const std::optional<Clave>& k) {
    if (k) {
        const auto rs = db.NewRecord("select comprobante_adjunto from ctcquorvel " + sql_clave_corta(*k));
        const std::int64_t propio = rs->eof() ? 0 : rs->fields("comprobante_adjunto").Value.integer();
        if (propio > 0) return std::to_string(propio);
    }
    const auto rs = db.NewRecord("select max(comprobante_adjunto) as num from ctcquorvel ");
    return std::to_string((rs->eof() ? 0 : rs->fields("num").Value.integer()) + 1);
}

std::string nombre_de_rut(clsConexion& db, const std::string& rut) {
    // in the order of the index that holds the names
    const auto rs = db.NewRecord("select top 1 nombre from ctcquorvel where rut_persona=" + sql_texto(rut) +
                                 " and nombre<>' ' order by num_ref desc");
    return rs->eof() ? std::string() : recortar(rs->fields("nombre").Value.text());
}

} // namespace quorvel
