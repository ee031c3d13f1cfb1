#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "voucher/grabar_sql.h"
#include "voucher/validar.h"

#include <algorithm>
#include <string_view>

namespace quorvel {
namespace {

using E = const EntradaValidacion&;
using Cuenta = std::string Configuracion::*;

struct CuentaObligatoria {
    Cuenta cuenta;
    const char* mensaje;
};
#define QUORVEL_SIN_CONFIGURAR(nombre, pantalla)                                                             \
    "La cuenta " nombre " no esta configurada. Antes de ingresar Asientos Contables se debe configurar la "  \
    "contabilidad. " pantalla " de Configuración"
constexpr CuentaObligatoria OBLIGATORIAS[] = {
    {&Configuracion::factura_cobrar,
     QUORVEL_SIN_CONFIGURAR("factura por cobrar", "Cierre esta pantalla y abra la pantalla")},
    {&Configuracion::boleta_cobrar,
     QUORVEL_SIN_CONFIGURAR("boleta por cobrar",
                            "Cierre el formulario de Asientos Contables y abra el formulario")},
    {&Configuracion::factura_pagar,
     QUORVEL_SIN_CONFIGURAR("factura por pagar", "Cierre esta pantalla y abra la pantalla")},
    {&Configuracion::boleta_pagar,
     QUORVEL_SIN_CONFIGURAR("boleta por pagar", "Cierre esta pantalla y abra la pantalla")},
    {&Configuracion::iva, QUORVEL_SIN_CONFIGURAR("IVA", "Cierre esta pantalla y abra la pantalla")},
    {&Configuracion::honorarios_pagar,
     QUORVEL_SIN_CONFIGURAR("honorarios por pagar", "Cierre esta pantalla y abra la pantalla")},
};
#undef QUORVEL_SIN_CONFIGURAR

bool boleta(E e) { return e.c.doc_libro == "B. ELECTRONICA" || e.c.doc_libro == "BOLETA"; }
bool sin_documento(E e) { return recortar(e.c.doc_libro).empty(); }
bool sin_boleta(E e) { return !boleta(e); }
bool sin_numero(E e) { return recortar(e.c.num_ref).empty(); }
bool sin_fecha(E e) { return !e.c.fecha_factura; }
bool sin_rut(E e) { return recortar(e.c.rut_persona).empty(); }
bool sin_nombre(E e) { return recortar(e.c.nombre).empty(); }

/// One row per book and check.
struct CampoExigido {
    std::string_view libro;
    bool (*falla)(E);
    const char* mensaje;
    Campo campo;
};
constexpr CampoExigido CAMPOS[] = {
    {"VENTAS", sin_documento, "Ingrese boleta o factura de venta", Campo::doc_libro},
    {"VENTAS", sin_numero, "Ingrese número de boleta o factura de venta", Campo::num_ref},
    {"VENTAS", sin_fecha, "Ingrese fecha de boleta o factura de venta", Campo::fecha_documento},
    {"VENTAS", sin_rut, "Ingrese RUT del cliente", Campo::rut},
    {"VENTAS", sin_nombre, "Ingrese nombre del cliente", Campo::nombre},
    {"COMPRAS", sin_documento, "Ingrese boleta o factura de compra", Campo::doc_libro},
    {"COMPRAS", sin_numero, "Ingrese número de boleta o factura de compras", Campo::num_ref},
    {"COMPRAS", sin_fecha, "Ingrese fecha de boleta o factura de compras", Campo::fecha_documento},
    {"COMPRAS", sin_rut, "Ingrese RUT del proveedor", Campo::rut},
    {"COMPRAS", sin_nombre, "Ingrese nombre del proveedor", Campo::nombre},
    {"RETENCIONES", sin_boleta, "Ingrese boleta de honorarios", Campo::doc_libro},
    {"RETENCIONES", sin_numero, "Ingrese número de boleta de honorarios", Campo::num_ref},
    {"RETENCIONES", sin_fecha, "Ingrese fecha de boleta de honorarios", Campo::fecha_documento},
    {"RETENCIONES", sin_rut, "Ingrese RUT del prestador del servicio", Campo::rut},
    {"RETENCIONES", sin_nombre, "Ingrese nombre del prestador del servicio", Campo::nombre},
};

/// A line on the account, or on the other one when there is one, must be there.
struct CuentaDelLibro {
    std::string_view libro;
    Cuenta cuenta;
    const char* mensaje;
    Cuenta otra;
    const char* mensaje_otra;
    bool (*exenta)(E); ///< kinds that need no such line
};
constexpr CuentaDelLibro CUENTAS[] = {
    {"VENTAS", &Configuracion::factura_cobrar, " debe incluir la cuenta de Factura por cobrar ",
     &Configuracion::boleta_cobrar, " o Boletas por cobrar", nullptr},
    {"VENTAS", &Configuracion::iva, " debe incluir la cuenta de IVA ", nullptr, "", nullptr},
    {"COMPRAS", &Configuracion::factura_pagar, " debe incluir la cuenta de Factura por pagar ",
     &Configuracion::boleta_pagar, " o Boletas por pagar", nullptr},
    {"COMPRAS", &Configuracion::iva_compra, " debe incluir la cuenta de IVA ", nullptr, "", boleta},
    {"RETENCIONES", &Configuracion::honorarios_pagar, " debe incluir la cuenta de honorarios por pagar ",
     nullptr, "", nullptr},
    {"RETENCIONES", &Configuracion::retencion_seg_cat,
     " debe incluir la cuenta de retención segunta categoria ", nullptr, "", nullptr},
};

bool tiene_cuenta(E e, Cuenta cuenta) {
    return cuenta != nullptr && std::any_of(e.c.lineas.begin(), e.c.lineas.end(),
                                            [&](const Linea& l) { return l.centro == e.k.*cuenta; });
}

std::string consulta_repetido(E e, const DocumentoReferido& d) {
    const auto condicion = [&](const char* a) {
        const std::string p = a;
        return p + "empresa=" + sql_numero(e.c.empresa) + " and " + p + "libro=" + sql_texto(d[0]) + " and " +
               p + "doc_libro=" + sql_texto(d[1]) + " and " + p + "rut_persona=" + sql_texto(d[2]) + " and " +
               p + "num_ref=" + sql_texto(d[3]) + " and " + p + "estado='P'";
    };
    if (e.nuevo) return "select * from ctcquorvel where " + condicion("");
    return "select * from ctcquorvel a where " + condicion("a.") +
           " and not exists (select 1 from ctcquorvel x " + sql_clave_corta(e.c.clave(), "x.") +
           " and x.empresa=a.empresa and x.f_comp=a.f_comp and x.documento=a.documento"
           " and x.num_docum=a.num_docum)";
}

bool revisar_campos(E e, const OyeRechazo& oye, bool& bien) {
    for (const CampoExigido& c : CAMPOS) {
        if (c.libro != e.c.libro || !c.falla(e)) continue;
        bien = false;
        if (!oye({c.mensaje, Icono::critico, c.campo})) return false;
    }
    return true;
}

bool revisar_cuentas(E e, const OyeRechazo& oye, bool& bien) {
    for (const CuentaDelLibro& c : CUENTAS) {
        if (c.libro != e.c.libro || (c.exenta != nullptr && c.exenta(e))) continue;
        if (tiene_cuenta(e, c.cuenta) || tiene_cuenta(e, c.otra)) continue;
        bien = false;
        const std::string otra = c.otra != nullptr ? e.k.*c.otra : std::string();
        if (!oye({"Asiento Contable del libro de " + e.c.libro + c.mensaje + e.k.*c.cuenta + c.mensaje_otra +
                      otra,
                  Icono::critico, Campo::detalle, false}))
            return false;
    }
    return true;
}

} // namespace

std::optional<DocumentoReferido> documento_referido(const Comprobante& c) {
    if (std::ranges::find(CAMPOS, c.libro, &CampoExigido::libro) == std::end(CAMPOS)) return std::nullopt;
    return DocumentoReferido{c.libro, c.doc_libro, c.rut_persona, c.num_ref};
}

bool revisar_libro(const EntradaValidacion& e, const OyeRechazo& oye) {
    bool bien = true;
    for (const CuentaObligatoria& o : OBLIGATORIAS) {
        if (!(e.k.*o.cuenta).empty()) continue;
        bien = false;
        if (!oye({o.mensaje})) return false;
    }
    if (!revisar_campos(e, oye, bien) || !revisar_cuentas(e, oye, bien)) return false;
    const auto documento = documento_referido(e.c);
    if (!bien || !documento || e.db.NewRecord(consulta_repetido(e, *documento))->eof()) return true;
    return oye(
        {"Ya existe una documento:" + e.c.doc_libro + " numero:" + e.c.num_ref + " RUT:" + e.c.rut_persona,
         Icono::critico, Campo::num_ref, false});
}

std::optional<Rechazo> ValidarLibro(const EntradaValidacion& e) {
    return primer_rechazo([&](const OyeRechazo& oye) { (void)revisar_libro(e, oye); });
}

} // namespace quorvel
