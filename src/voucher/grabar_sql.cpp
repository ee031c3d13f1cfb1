#include "voucher/grabar_sql.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

namespace quorvel {
namespace {

/// RUT, name and document number are stored with one trailing blank.
std::string con_blanco(const std::string& valor) { return sql_texto(valor + " "); }
std::string clave(const Clave& k, const std::string& t, const std::string& subsistema) {
    return " where " + t + "empresa=" + sql_numero(k.empresa) + subsistema + " and " + t +
           "f_comp=" + sql_fecha(k.f_comp) + " and " + t + "documento=" + sql_texto(k.documento) + " and " +
           t + "num_docum=" + sql_texto(k.num_docum);
}
/// A mark of a text column.
std::string marca(bool si) { return si ? "'1'" : "'0'"; }
std::string tasa(const std::string& pantalla) { return sql_texto(tasa_guardada(pantalla)); }

} // namespace

std::string glosa_guardada(const std::string& glosa) { return primeros(glosa, LARGO_GLOSA); }

std::string tasa_guardada(const std::string& pantalla) {
    const bool chilena = pantalla.find(',') != std::string::npos && numero_sql(pantalla);
    return reemplazar(chilena ? reemplazar(pantalla, ".", "") : pantalla, ",", ".");
}

std::string sql_clave(const Clave& k, const std::string& tabla) {
    return clave(k, tabla, " and " + tabla + "subsistema=" + sql_texto(k.subsistema));
}

std::string sql_clave_corta(const Clave& k, const std::string& tabla) { return clave(k, tabla, {}); }

std::string sql_cabecera_nueva(const Comprobante& c, const ImportesSql& m, Fecha hoy) {
    return "insert into ctcQuorvel( empresa,subsistema,f_comp, documento, num_docum,moneda, "
           " t_debe, t_haber, concepto, usuario,  f_ult_modificacion, cotizacion,estado,"
           " libro, doc_libro, num_ref, fecha_factura, fecha_pago, rut_persona,nombre,"
           " apertura,monto_neto,monto_exento, codigo_otro_impuesto, tasa_impuesto_otro,activo_fijo,"
           " codigo_no_recuperable, ifrs, comprobante_adjunto, nro_correlativo,iva_activo_fijo) values(" +
           sql_numero(c.empresa) + "," + sql_texto(c.subsistema) + "," + sql_fecha(c.f_comp) + "," +
           sql_texto(c.documento) + "," + sql_texto(c.num_docum) + "," + sql_texto(c.moneda) + "," +
           sql_numero(m.t_debe) + "," + sql_numero(m.t_haber) + "," + sql_texto(c.concepto) + "," +
           sql_numero(c.usuario) + "," + sql_fecha(hoy) + "," + sql_numero(c.cotizacion) + ",'P'," +
           sql_texto(c.libro) + "," + sql_texto(c.doc_libro) + "," + con_blanco(c.num_ref) + "," +
           sql_fecha(c.fecha_factura) + "," + sql_fecha(c.fecha_pago) + "," + con_blanco(c.rut_persona) +
           "," + con_blanco(c.nombre) + "," + marca(c.apertura) + "," + sql_numero(c.monto_neto.pesos()) +
           "," + sql_numero(c.monto_exento.pesos()) + "," + sql_texto(c.codigo_otro_impuesto) + "," +
           tasa(c.tasa_impuesto_otro) + "," + marca(c.activo_fijo) + "," +
           sql_texto(c.codigo_no_recuperable) + "," + sql_texto(c.ifrs) + "," + sql_numero(m.conjunto) + "," +
           sql_numero(c.nro_correlativo) + "," + sql_numero(c.iva_activo_fijo) + ")";
}

std::string sql_cabecera_guardada(const Comprobante& c, const ImportesSql& m, Fecha hoy) {
    return "update ctcQuorvel  set concepto=" + sql_texto(c.concepto) + ", t_debe=" + sql_numero(m.t_debe) +
           ", t_haber=" + sql_numero(m.t_haber) + ", f_ult_modificacion=" + sql_fecha(hoy) +
           ", cotizacion=" + sql_numero(c.cotizacion) + ", usuario=" + sql_numero(c.usuario) +
           ", estado='P', libro=" + sql_texto(c.libro) + ", doc_libro=" + sql_texto(c.doc_libro) +
           ", num_ref=" + con_blanco(c.num_ref) + ", fecha_factura=" + sql_fecha(c.fecha_factura) +
           ", fecha_pago=" + sql_fecha(c.fecha_pago) + ", rut_persona=" + con_blanco(c.rut_persona) +
           ", nombre=" + con_blanco(c.nombre) + ",apertura=" + con_blanco(c.apertura ? "1" : "0") +
           ",monto_neto=" + sql_numero(c.monto_neto.pesos()) +
           " ,monto_exento=" + sql_numero(c.monto_exento.pesos()) +
           " , codigo_otro_impuesto=" + sql_texto(c.codigo_otro_impuesto) +
           " , tasa_impuesto_otro=" + tasa(c.tasa_impuesto_otro) + " , activo_fijo=" + marca(c.activo_fijo) +
           " , codigo_no_recuperable=" + sql_texto(c.codigo_no_recuperable) + ", ifrs=" + sql_texto(c.ifrs) +
           ", comprobante_adjunto=" + sql_numero(m.conjunto) +
           ", nro_correlativo=" + sql_numero(c.nro_correlativo) +
           ", iva_activo_fijo=" + sql_numero(c.iva_activo_fijo) + sql_clave(c.clave());
}

std::string sql_ultimo_numero(const Clave& k, Fecha hoy) {
    return "update adxemp_doc set ultimo_emitido=" + sql_texto(k.num_docum) +
           " , f_u_emision=" + sql_fecha(hoy) + " where empresa=" + sql_numero(k.empresa) +
           " and documento=" + sql_texto(k.documento);
}

std::string sql_comprobante_de_cierre(const Clave& k, int anio) {
    return "update ctmconfigu set f_comp_cierre =" + sql_fecha(k.f_comp) +
           ",documento_cierre=" + sql_texto(k.documento) + ", num_docum_cierre=" + sql_texto(k.num_docum) +
           " where empresa= " + sql_numero(k.empresa) + " and anio=" + sql_numero(anio);
}

std::string sql_anulada(const Comprobante& c, const ImportesSql& m, Fecha f_ult_modificacion) {
    return "update  ctcQuorvel  set concepto=" + sql_texto(c.concepto) + ", t_debe=" + sql_numero(m.t_debe) +
           ", t_haber=" + sql_numero(m.t_haber) + ", f_ult_modificacion=" + sql_fecha(f_ult_modificacion) +
           ", cotizacion=" + sql_numero(c.cotizacion) + ", usuario=" + sql_numero(c.usuario) +
           ", estado='X'" + sql_clave(c.clave());
}

std::string sql_cheque(const Clave& k, const Comprobante::Cheque& q) {
    return "update ctcquorvel set cheque=" + sql_texto(q.cheque) + ", banco=" + sql_texto(q.banco) +
           ", cuenta=" + sql_texto(q.cuenta) + ", fecha_cheque=" + sql_fecha(q.fecha) +
           ", beneficiario=" + sql_texto(q.beneficiario) + ", nominativo=" + sql_numero(q.nominativo) +
           ", cruzado=" + sql_numero(q.cruzado) + sql_clave(k);
}

std::string sql_factura_sigue(const Clave& antes, const Clave& ahora) {
    return "update ftcfactura set f_comp=" + sql_fecha(ahora.f_comp) +
           ", documento=" + sql_texto(ahora.documento) + ", num_docum=" + sql_texto(ahora.num_docum) +
           sql_clave_corta(antes);
}

std::string sql_borrar_detalle(const Clave& k) { return " delete from ctdquorvel " + sql_clave(k); }

std::string sql_detalle(const Clave& k, std::size_t secuencia, const Linea& l) {
    return "Insert into ctdquorvel(empresa,  subsistema, f_comp, documento, num_docum, "
           " secuencia, centro, auxiliar, debe_nacional,  haber_nacional, glosa, centro2, conciliado,num_ref,"
           " codigo_otro_impuesto,tasa_impuesto_otro) values (" +
           sql_numero(k.empresa) + "," + sql_texto(k.subsistema) + "," + sql_fecha(k.f_comp) + "," +
           sql_texto(k.documento) + "," + sql_texto(k.num_docum) + "," + std::to_string(secuencia) + "," +
           sql_texto(l.centro) + "," + sql_texto(l.auxiliar) + "," + sql_numero(monto_guardado(l.debe)) +
           "," + sql_numero(monto_guardado(l.haber)) + "," + sql_texto(glosa_guardada(l.glosa)) + "," +
           sql_texto(l.centro2) + "," + sql_texto(l.conciliado) + "," + sql_texto(l.num_ref) + "," +
           sql_texto(l.codigo_otro_impuesto) + "," + tasa(l.tasa_impuesto_otro) + ")";
}

std::string sql_borrar_adjuntos(std::int64_t conjunto) {
    return " delete from ctdcomprad  where comprobante_adjunto=" + sql_numero(conjunto);
}

std::string sql_adjunto(std::int64_t conjunto, std::int64_t correlativo, const std::string& nombre) {
    return "Insert into ctdcomprad(comprobante_adjunto,  correlativo,nombre) values ( " +
           sql_numero(conjunto) + "," + sql_numero(correlativo) + "," + sql_texto(nombre) + ")";
}

} // namespace quorvel
