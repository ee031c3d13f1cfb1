#include "registro/contabilizar.h"

#include "assistants/libros.h"
#include "assistants/lineas.h"
#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/grabar.h"
#include "voucher/listas.h"
#include "voucher/numeracion.h"
#include "voucher/validar.h"

#include <algorithm>

namespace quorvel::registro {
namespace {

const Contraparte& contraparte_de(const Variante& v, const std::string& doc_libro) {
    return v.es_boleta(doc_libro) && !es_nota_credito(doc_libro) ? v.boleta : v.factura;
}

/// The master's code of a tax; the authority's own where the master does not have it.
std::string codigo_maestro(const Contabilidad& c, const OtroImpuesto& o) {
    const auto i = c.impuestos.find(std::to_string(val_entero(o.codigo)));
    return i == c.impuestos.end() ? o.codigo : i->second;
}

std::string tasa_mostrada(const OtroImpuesto& o) { return reemplazar(o.tasa, ".", ","); }

/// The assistant's one line of other taxes becomes one for each tax, where they make up all of it.
void separar_impuestos(std::vector<Linea>& lineas, const Fila& f, const Contabilidad& c,
                       const std::string& cuenta) {
    std::int64_t suma = 0;
    for (const OtroImpuesto& o : f.doc.otros) suma += con_signo(o);
    if (f.doc.otros.empty() || suma != f.c.otro || lineas.empty() || lineas.back().centro != cuenta) return;
    const Linea modelo = lineas.back();
    const bool debe = (modelo.debe != Decimal()) == (f.c.otro > 0);
    lineas.pop_back();
    for (const OtroImpuesto& o : f.doc.otros) {
        Linea l = modelo;
        const bool al_debe = debe == (con_signo(o) > 0);
        l.debe = al_debe ? std::abs(o.valor) : 0;
        l.haber = al_debe ? 0 : std::abs(o.valor);
        l.codigo_otro_impuesto = codigo_maestro(c, o);
        l.tasa_impuesto_otro = tasa_mostrada(o);
        lineas.push_back(std::move(l));
    }
}

std::vector<Linea> lineas_de(const Fila& f, const Propuesta& p, const Contabilidad& c,
                             const std::string& concepto) {
    const Variante& v = variante(f.doc.libro);
    DocumentoTributario d;
    d.documento = f.doc_libro;
    d.cuenta = p.cuenta;
    d.auxiliar = p.auxiliar;
    d.aux_contraparte = p.aux_contraparte;
    d.total = f.c.total;
    d.iva = f.c.iva;
    d.otro = f.c.otro;
    auto lineas = lineas_documento(v, d, c.config, concepto);
    lineas.front().centro2 = p.centro_costo;
    separar_impuestos(lineas, f, c, c.config.*v.otros);
    return lineas;
}

void poner_impuestos(Comprobante& c, const Fila& f, const Contabilidad& k) {
    if (f.doc.otros.size() == 1) { // the header has room for one
        const OtroImpuesto& o = f.doc.otros.front();
        const auto maestro = k.impuestos.find(std::to_string(val_entero(o.codigo)));
        if (maestro != k.impuestos.end()) {
            c.codigo_otro_impuesto = maestro->second;
            c.tasa_impuesto_otro = tasa_mostrada(o);
        }
    }
    c.activo_fijo = f.doc.iva_activo_fijo != 0 || f.doc.neto_activo_fijo != 0;
    c.iva_activo_fijo = f.doc.iva_activo_fijo;
    const bool conocido = std::ranges::any_of(NO_RECUPERABLES, [&](const std::string& entrada) {
        return recortar(primeros(entrada, 2)) == f.doc.codigo_no_recuperable;
    });
    if (f.c.costo != 0 && conocido) c.codigo_no_recuperable = f.doc.codigo_no_recuperable;
}

std::string rechazo_de(const Contabilidad& k, Maestros& maestros, const Comprobante& c) {
    const EntradaValidacion e{c, k.config, maestros, k.db, k.hoy, true, false};
    const auto rechazo = ValidarComprobante(e);
    return rechazo ? rechazo->mensaje : std::string();
}

} // namespace

Contabilidad preparar(clsConexion& db, int empresa, int usuario, Fecha hoy) {
    Contabilidad c{.db = db,
                   .empresa = empresa,
                   .usuario = usuario,
                   .hoy = hoy,
                   .config = leer_configuracion(db, empresa, hoy),
                   .documento = {},
                   .moneda = {},
                   .impuestos = {}};
    const auto moneda = db.NewRecord(CONSULTA_MONEDAS);
    if (!moneda->eof()) c.moneda = recortar(primeros(moneda->fields("moneda").Value.text(), 2));
    for (const auto rs = db.NewRecord("select * from ctmotroimp"); !rs->eof(); rs->MoveNext()) {
        const std::string codigo = recortar_fin(rs->fields("otro_impuesto").Value.text());
        c.impuestos.try_emplace(std::to_string(val_entero(codigo)), codigo);
    }
    return c;
}

std::string documento_habitual(clsConexion& db, int empresa, int libro) {
    const auto ultimo =
        db.NewRecord("select top 1 documento from ctcquorvel where empresa=" + sql_numero(empresa) +
                     " and libro=" + sql_texto(TEXTOS_LIBRO.at(static_cast<std::size_t>(libro))) +
                     " order by year(f_comp) desc, month(f_comp) desc, nro_correlativo desc");
    if (!ultimo->eof()) return recortar_fin(ultimo->at(0).text());
    const auto primero = db.NewRecord(CONSULTA_DOCUMENTOS);
    return primero->eof() ? "" : recortar_fin(primero->fields("documento").Value.text());
}

Comprobante comprobante_de(const Fila& f, const Propuesta& p, const Contabilidad& k, Mes mes) {
    Comprobante c;
    c.empresa = k.empresa;
    c.usuario = k.usuario;
    c.documento = k.documento;
    c.moneda = k.moneda;
    // a document of an earlier month counts in the month whose register holds it
    const Fecha fecha = f.doc.fecha.value_or(mes.primer_dia());
    c.f_comp = mes.anio != 0 && mes.desde(fecha) > 0 ? mes.primer_dia() : fecha;
    c.libro = TEXTOS_LIBRO.at(static_cast<std::size_t>(f.doc.libro));
    c.doc_libro = f.doc_libro;
    c.num_ref = f.doc.folio;
    c.fecha_factura = f.doc.fecha;
    c.rut_persona = f.doc.rut;
    c.nombre = mayusculas(f.doc.nombre);
    c.concepto =
        p.glosa.empty() ? f.doc_libro + " " + f.doc.folio + " " + c.nombre : glosa_para(p, f.doc.folio);
    c.monto_neto = f.c.neto;
    c.monto_exento = f.c.exento;
    poner_impuestos(c, f, k);
    c.lineas = lineas_de(f, p, k, c.concepto);
    c.totales = totales_de(c.lineas);
    return c;
}

void numerar(const Contabilidad& k, Comprobante& c) {
    c.num_docum = std::to_string(proponer_numero(k.db, k.empresa, k.documento, anio(*c.f_comp)));
    c.nro_correlativo = proponer_correlativo(k.db, k.empresa, c.libro, anio(*c.f_comp), mes(*c.f_comp));
}

std::string le_falta(const Fila& f, const Propuesta& p, const Configuracion& k) {
    if (p.cuenta.empty()) return "cuenta";
    const Contraparte& parte = contraparte_de(variante(f.doc.libro), f.doc_libro);
    return k.*parte.requiere == "1" && p.aux_contraparte.empty() ? "auxiliar" : "";
}

std::string ensayar(const Contabilidad& k, Maestros& maestros, const Fila& f, const Propuesta& p, Mes mes) {
    Comprobante c = comprobante_de(f, p, k, mes);
    numerar(k, c);
    return rechazo_de(k, maestros, c);
}

Contabilizado contabilizar(const Contabilidad& k, Maestros& maestros, const Fila& f, const Propuesta& p,
                           Mes mes) {
    constexpr int INTENTOS = 5;
    Comprobante c = comprobante_de(f, p, k, mes);
    OpcionesGrabar o;
    o.nuevo = true;
    o.hoy = k.hoy;
    o.operacion = operacion::REGISTRO;
    o.grupo = k.grupo;
    std::string error;
    for (int i = 0; i < INTENTOS; ++i) {
        const std::string antes = c.num_docum;
        numerar(k, c);
        if (c.num_docum == antes) break; // not the number was refused
        if (error = rechazo_de(k, maestros, c); !error.empty()) break;
        o.numero_propuesto = val_entero(c.num_docum);
        const Desenlace d = GrabarComprobante(k.db, c, o).desenlace;
        if (d) return {"", c.clave()};
        error = d.mensaje();
        if (k.db.session_failed()) break;
    }
    return {error, {}};
}

} // namespace quorvel::registro
