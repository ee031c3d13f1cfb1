#include "voucher/validar.h"

#include "text/letras_utf8.h"
#include "voucher/cargar.h"

#include <algorithm>

namespace quorvel {
namespace {

using E = const EntradaValidacion&;
using enum Icono;

/// One check of the fixed order; the RUT check rewrites its box and runs before, on the screen.
struct Regla {
    int paso;
    bool (*falla)(E);
    const char* mensaje;
    std::string (*resto)(E); ///< what follows the message, null is nothing
    Icono icono;
    Campo campo;
    bool va = true; ///< the focus goes to the field
};

std::string dmy(const std::optional<Fecha>& f) { return f ? fecha_dmy(*f) : std::string(); }

bool despues_del_periodo(E e) {
    const auto fin = e.k.existe ? e.k.fin(e.hoy) : std::nullopt;
    return e.c.f_comp && fin && *e.c.f_comp > *fin;
}
/// Also without a date at all: an empty or impossible one lies in no period.
bool antes_del_periodo(E e) {
    if (!e.c.f_comp) return true;
    const auto inicio = e.k.existe ? e.k.inicio(e.hoy) : std::nullopt;
    return inicio && *e.c.f_comp < *inicio;
}
bool anio_bloqueado_por_cierre(E e) {
    return e.k.existe && e.c.f_comp && anio(*e.c.f_comp) == e.k.anio && e.k.f_comp_cierre &&
           !es_comprobante_cierre(e.c, e.k) && cierre_vigente(e.db, e.c.empresa, e.k);
}
/// As displayed.
bool descuadrado(E e) {
    const Totales mostrados = e.c.totales.redondeados();
    return mostrados.debe != mostrados.haber;
}

constexpr Regla REGLAS[] = {
    {2, [](E e) { return e.c.documento.empty() || e.c.documento == "(Ninguno)"; },
     "Ingrese tipo de documento", nullptr, critico, Campo::documento},
    {3, [](E e) { return recortar(e.c.num_docum).empty(); }, "Ingrese Número", nullptr, critico,
     Campo::numero},
    {4, despues_del_periodo, "Fecha fuera del período de digitacion, Máxima:",
     [](E e) { return dmy(e.k.fin(e.hoy)); }, critico, Campo::fecha},
    {5, antes_del_periodo, "Fecha fuera del período de digitacion, Mínima:",
     [](E e) { return dmy(e.k.inicio(e.hoy)); }, critico, Campo::fecha},
    {6, [](E e) { return e.c.f_comp && e.c.fecha_factura && e.c.f_comp < e.c.fecha_factura; },
     "Fecha de comprobante ",
     [](E e) { return dmy(e.c.f_comp) + " menor a fecha de documento:" + dmy(e.c.fecha_factura); }, critico,
     Campo::fecha_documento},
    {7, [](E e) { return e.k.existe && e.c.f_comp && anio(*e.c.f_comp) < e.k.anio; },
     "Año del Comprobante ya esta cerrado ", nullptr, critico, Campo::fecha},
    {8, anio_bloqueado_por_cierre, "No se puede ingresar mas Comprobantes en el año ",
     [](E e) {
         return std::to_string(e.k.anio) + "\r\n porque el Comprobante de Cierre Anual ha sido generado"
                                           "\r\n y todavia no se ha cerrado el Año Contable, para cerrar"
                                           "\r\n el año ejecute la opcion del menú Cerrar Año Contable";
     },
     critico, Campo::fecha, false},
    {9, [](E e) { return e.c.concepto.empty(); }, "Ingrese Glosa", nullptr, critico, Campo::concepto},
    {10, [](E e) { return e.c.libro.empty(); }, "Ingrese libros", nullptr, critico, Campo::libro},
    {11, [](E e) { return e.c.lineas.empty(); }, "Ingrese detalle del comprobante", nullptr, critico,
     Campo::detalle},
    {12, [](E e) { return e.editando; },
     "Cuadricula en modo de edicion, cambiese de fila para cambiar el modo ", nullptr, critico,
     Campo::detalle},
    {13, descuadrado, "Comprobante descuadrado", nullptr, critico, Campo::totales, false},
    {14, [](E e) { return e.nuevo && ExisteComprobante(e.db, e.c.clave()); },
     "Ya existe un comprobante contable con el mismo numero para esa fecha, debe cambiar el numero de "
     "comprobante o la fecha del comprobante antes de volver a presionar el boton actualizar, para que la "
     "información quede grabada.",
     nullptr, exclamacion, Campo::numero, false},
    {15, [](E e) { return e.c.libro != "CONTABLES" && (e.c.ifrs == "1" || e.c.ifrs == "2"); },
     "Norma ingresada no valida, cambiar el campo norma a Tributaria / IFRS, solamente los comprobantes de "
     "los libros CONTABLES pueden ser de norma tributaria e IFRS ",
     nullptr, exclamacion, Campo::norma, false},
};

constexpr bool del_cierre(const Regla& r) { return r.paso == 7 || r.paso == 8; }
constexpr bool del_periodo(const Regla& r) { return r.paso == 4 || r.paso == 5 || del_cierre(r); }
Rechazo rechazar(const Regla& r, E e) {
    return {r.mensaje + (r.resto != nullptr ? r.resto(e) : std::string()), r.icono, r.campo, r.va};
}

std::optional<Rechazo> primero_de(bool (*cuenta)(const Regla&), const Comprobante& c, const Configuracion& k,
                                  clsConexion& db, Fecha hoy) {
    Maestros ninguno;
    const EntradaValidacion e{c, k, ninguno, db, hoy, false, false};
    for (const Regla& r : REGLAS)
        if (cuenta(r) && r.falla(e)) return rechazar(r, e);
    return std::nullopt;
}

} // namespace

bool es_comprobante_cierre(const Comprobante& c, const Configuracion& k) {
    return k.f_comp_cierre && c.f_comp == k.f_comp_cierre &&
           c.documento == recortar_fin(k.documento_cierre) &&
           recortar_fin(c.num_docum) == recortar_fin(k.num_docum_cierre);
}

bool cierre_vigente(clsConexion& db, int empresa, const Configuracion& k) {
    if (!k.f_comp_cierre) return false;
    const auto c = leer_cabecera(db, empresa, *k.f_comp_cierre, k.documento_cierre, k.num_docum_cierre);
    return c && c->estado == "P";
}

std::optional<Rechazo> rechazo_periodo(const Comprobante& c, const Configuracion& k, clsConexion& db,
                                       Fecha hoy) {
    return primero_de(del_periodo, c, k, db, hoy);
}

std::optional<Rechazo> rechazo_cierre(const Comprobante& c, const Configuracion& k, clsConexion& db) {
    return primero_de(del_cierre, c, k, db, Fecha{});
}

bool revisar_comprobante(E e, const OyeRechazo& oye) {
    for (const Regla& r : REGLAS)
        if (r.falla(e) && !oye(rechazar(r, e))) return false;
    if (!revisar_libro(e, oye)) return false;
    e.maestros.usar(e.db);
    return revisar_lineas(e.c.lineas, e.maestros[Maestro::cuentas], oye);
}

std::optional<Rechazo> ValidarComprobante(const EntradaValidacion& e) {
    return primer_rechazo([&](const OyeRechazo& oye) { (void)revisar_comprobante(e, oye); });
}

} // namespace quorvel
