#include "interchange/factura.h"
#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/rut.h"
#include "voucher/grabar_sql.h"
#include "voucher/pasos.h"

namespace quorvel {

namespace {

using Falla = PasoFallido;

void paso(clsConexion& db, const std::string& sql, const std::string& mensaje) {
    exigir(db, sql, (mensaje + sql).c_str());
}

std::optional<std::int64_t> una_persona(clsConexion& db, const std::string& condicion) {
    const auto rs = db.NewRecord("select * from admpersona where " + condicion + " order by persona");
    if (rs->eof()) return {};
    return rs->fields("persona").Value.integer();
}

/// By RUT, whether it was stored with points or without. A missing RUT does not tell who somebody is: without
/// one it takes the same name, or all customers without a RUT would be one person.
std::optional<std::int64_t> persona_conocida(clsConexion& db, const Cliente& c) {
    if (recortar(c.ruc).empty()) return una_persona(db, "cedula_ruc='' and n_persona=" + sql_texto(c.nombre));
    const ResultadoRut chileno = validarut(c.ruc);
    return una_persona(db, "cedula_ruc=" + sql_texto(c.ruc) +
                               " or cedula_ruc=" + sql_texto(reemplazar(c.ruc, ".", "")) +
                               " or cedula_ruc=" + sql_texto(chileno.valido ? chileno.texto : c.ruc));
}

/// The customer that this invoice has and no other: without a RUT, what is saved now corrects it.
std::optional<std::int64_t> persona_de_la_factura(clsConexion& db, const Clave& k) {
    const auto rs = db.NewRecord("select cliente from ftcfactura" + sql_clave_corta(k));
    if (rs->eof()) return {};
    const std::string cliente = sql_numero(rs->fields("cliente").Value.integer());
    const auto usos = db.NewRecord("select count(*) as usos from ftcfactura where cliente=" + cliente);
    if (usos->fields("usos").Value.integer() != 1) return {};
    return una_persona(db, "cedula_ruc='' and persona=" + cliente);
}

std::optional<std::int64_t> persona_de(clsConexion& db, const Clave& k, const Cliente& c) {
    const auto conocida = persona_conocida(db, c);
    return conocida ? conocida : persona_de_la_factura(db, k);
}

constexpr const char* MENSAJE = "Problemas al ingresar persona sql:";

std::int64_t ultima_persona(clsConexion& db) {
    const auto rs = db.NewRecord("select max(persona) as maximo from admpersona ");
    if (rs->fields("maximo").Value.null()) throw Falla("maximo de persona no válido");
    return rs->fields("maximo").Value.integer();
}

std::int64_t grabar_persona(clsConexion& db, const Clave& k, const Cliente& c) {
    auto persona = persona_de(db, k, c);
    if (!persona) { // who adds a person holds the last one: at one moment nobody adds the same customer
        paso(db, "update admpersona set activo=activo where persona=" + sql_numero(ultima_persona(db)),
             MENSAJE);
        persona = persona_de(db, k, c);
    }
    if (persona) {
        paso(db,
             "update admpersona set n_persona=" + sql_texto(c.nombre) +
                 ",telefonos=" + sql_texto(c.telefonos) + ",ciudad=" + sql_texto(c.ciudad) +
                 ",provincia=" + sql_texto(c.comuna) + ",direccion=" + sql_texto(c.direccion) +
                 ",cedula_ruc=" + sql_texto(c.ruc) + ",observacion=" + sql_texto(c.giro) +
                 " where persona= " + sql_numero(*persona),
             MENSAJE);
        return *persona;
    }
    const std::int64_t nueva = ultima_persona(db) + 1;
    paso(db,
         "Insert into admpersona( persona , n_persona, telefonos, ciudad, provincia, direccion, cedula_ruc, "
         "observacion, tipo , activo) values (" +
             sql_numero(nueva) + "," + sql_texto(c.nombre) + "," + sql_texto(c.telefonos) + "," +
             sql_texto(c.ciudad) + "," + sql_texto(c.comuna) + "," + sql_texto(c.direccion) + "," +
             sql_texto(c.ruc) + "," + sql_texto(c.giro) + ",'J','1')",
         MENSAJE);
    return nueva;
}

struct Montos {
    std::string neto, iva, total;
};
Montos montos(const Factura& f) {
    const auto leer = [](const std::string& texto, const char* que) {
        const auto n = monto_sql(texto);
        if (!n) throw Falla(std::string(que) + " no válido: " + texto);
        return *n;
    };
    return {leer(f.neto, "Neto"), leer(f.iva, "Iva"), leer(f.total, "Total")};
}

/// The text column needs its maximum as a number; the number column has it.
std::string numero_siguiente(clsConexion& db, int empresa) {
    const std::string maximo = db.TypeDB() == 2 ? "max(val(factura))" : "max(factura)";
    const auto rs =
        db.NewRecord("select " + maximo + " as maximo from ftcfactura  where empresa=" + sql_numero(empresa));
    return std::to_string(rs->fields("maximo").Value.integer() + 1);
}

std::string insertar(clsConexion& db, const Clave& k, const Factura& f, std::int64_t persona,
                     const Montos& m) {
    const std::string factura = numero_siguiente(db, k.empresa);
    paso(
        db,
        "Insert into ftcfactura( empresa , sucursal, factura, proforma, Fecha , cliente, moneda, cotización, "
        "descuento, descuento_esp, iva, valor_total, f_comp , documento, num_docum) values (" +
            sql_numero(k.empresa) + ",'1'," + sql_texto(factura) + "," + sql_texto(f.numero) + "," +
            sql_fecha(f.fecha) + "," + sql_numero(persona) + ",'PS',1,0," + m.neto + "," + m.iva + "," +
            m.total + "," + sql_fecha(k.f_comp) + "," + sql_texto(k.documento) + "," +
            sql_texto(k.num_docum) + ")",
        "Problemas para grabar factura sql:");
    return factura;
}

std::string grabar_cabecera(clsConexion& db, const Clave& k, const Factura& f, std::int64_t persona) {
    const Montos m = montos(f);
    const auto rs = db.NewRecord("select * from ftcfactura" + sql_clave_corta(k));
    if (rs->eof()) return insertar(db, k, f, persona, m);
    const std::string factura = recortar_fin(rs->fields("factura").Value.text());
    paso(db,
         "update ftcfactura set proforma=" + sql_texto(f.numero) + ",fecha=" + sql_fecha(f.fecha) +
             ",cliente=" + sql_numero(persona) + ",descuento_esp=" + m.neto + ",iva=" + m.iva +
             ",valor_total=" + m.total + " where empresa=" + sql_numero(k.empresa) +
             " and factura= " + sql_texto(factura),
         "problemas para modificar factura sql:");
    return factura;
}

void grabar_detalle(clsConexion& db, int empresa, const std::string& factura, const Factura& f) {
    constexpr const char* PROBLEMA = "problemas para grabar detalle factura ";
    const std::string clave = sql_numero(empresa) + "," + sql_texto(factura) + ",";
    exigir(db,
           "delete from ftdfactura where empresa=" + sql_numero(empresa) +
               " and  factura= " + sql_texto(factura),
           PROBLEMA);
    int producto = 0;
    for (const LineaFactura& l : f.lineas) {
        const auto cantidad = monto_sql(l.cantidad), precio = monto_sql(l.precio);
        if (!cantidad || !precio) throw Falla(PROBLEMA);
        exigir(db,
               "Insert into ftdfactura( empresa , factura,producto, observacion,cantidad, precio) values (" +
                   clave + sql_texto(std::to_string(++producto)) + "," + sql_texto(l.descripcion) + "," +
                   *cantidad + "," + *precio + ")",
               PROBLEMA);
    }
}

/// Whether the voucher's stored invoice is this very one.
bool quedo_grabada(clsConexion& db, const Clave& k, const Factura& f) {
    const Montos m = montos(f);
    const bool cabecera =
        !db.NewRecord("select * from ftcfactura" + sql_clave_corta(k) + " and descuento_esp=" + m.neto +
                      " and iva=" + m.iva + " and valor_total=" + m.total)
             ->eof();
    const auto g = leer_factura(db, k);
    if (!cabecera || !g || g->fecha != f.fecha) return false;
    const auto texto = [](const Factura& x) {
        std::string t = recortar_fin(x.numero);
        for (const std::string* s : {&x.cliente.nombre, &x.cliente.direccion, &x.cliente.comuna,
                                     &x.cliente.ciudad, &x.cliente.giro, &x.cliente.telefonos})
            t += "|" + recortar_fin(*s);
        for (const LineaFactura& l : x.lineas)
            t += "|" + recortar_fin(l.descripcion) + "|" + numero_sql(l.cantidad).value_or("") + "|" +
                 numero_sql(l.precio).value_or("");
        return t;
    };
    return texto(*g) == texto(f);
}

} // namespace

Desenlace GrabarFactura(clsConexion& db, const Clave& clave, const Factura& f) {
    const auto grabar = [&] {
        const std::int64_t persona = grabar_persona(db, clave, f.cliente);
        const std::string factura = grabar_cabecera(db, clave, f, persona);
        grabar_detalle(db, clave.empresa, factura, f);
    };
    return en_transaccion(db, grabar, [&] { return quedo_grabada(db, clave, f); });
}

} // namespace quorvel
