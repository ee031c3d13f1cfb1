#include "voucher/esta_grabado.h"

#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/cargar.h"
#include "voucher/grabar_sql.h"

namespace quorvel {
namespace {

constexpr std::size_t LARGO_GLOSA = 60;

using Rasgos = std::vector<std::string>;

void agregar(Rasgos& r, const std::string& texto) { r.push_back(recortar_fin(texto)); }
void agregar(Rasgos& r, std::optional<Fecha> fecha) { r.push_back(fecha ? fecha_dmy(*fecha) : ""); }

/// All that a save writes into the header, in one form for the screen's and the stored one.
Rasgos cabecera(const Comprobante& c) {
    Rasgos r;
    for (const std::string* texto : {&c.concepto, &c.libro, &c.doc_libro, &c.num_ref, &c.rut_persona,
                                     &c.nombre, &c.codigo_otro_impuesto, &c.codigo_no_recuperable, &c.ifrs})
        agregar(r, *texto);
    agregar(r, reemplazar(c.tasa_impuesto_otro, ",", "."));
    agregar(r, c.fecha_factura);
    agregar(r, c.fecha_pago);
    for (const std::string* numero : {&c.nro_correlativo, &c.iva_activo_fijo})
        agregar(r, entero_sql(*numero).value_or(""));
    agregar(r, Decimal::leer(c.cotizacion).formato("0.000000"));
    for (const double monto : {c.monto_neto, c.monto_exento}) agregar(r, formato(monto, "0"));
    for (const int numero : {c.usuario, c.apertura, c.activo_fijo}) agregar(r, std::to_string(numero));
    return r;
}

Rasgos lineas(const Comprobante& c) {
    Rasgos r;
    for (const Linea& l : c.lineas)
        for (const std::string& celda :
             {l.centro, l.auxiliar, entero_sql(l.debe).value_or(""), entero_sql(l.haber).value_or(""),
              primeros(l.glosa, LARGO_GLOSA), l.centro2, l.conciliado, l.num_ref, l.codigo_otro_impuesto,
              reemplazar(l.tasa_impuesto_otro, ",", ".")})
            agregar(r, celda);
    return r;
}

Rasgos lineas_guardadas(clsConexion& db, const Clave& clave) {
    Rasgos r;
    for (const auto rs = db.NewRecord(consulta_lineas(clave)); !rs->eof(); rs->MoveNext())
        for (std::size_t i = 1; i < rs->columns().size(); ++i) agregar(r, rs->at(i).text());
    return r;
}

} // namespace

bool esta_grabado(clsConexion& db, const Comprobante& c, Fecha hoy) {
    const Clave k = c.clave();
    const auto g = leer_cabecera(db, k.empresa, k.f_comp, k.documento, k.num_docum, k.subsistema);
    return g && g->estado == "P" && g->f_ult_modificacion == hoy && cabecera(*g) == cabecera(c) &&
           lineas_guardadas(db, k) == lineas(c) && leer_adjuntos(db, g->comprobante_adjunto) == c.adjuntos;
}

} // namespace quorvel
