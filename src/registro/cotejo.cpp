#include "registro/cotejo.h"

#include "assistants/calculo.h"
#include "assistants/libros.h"
#include "registro/clases.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace quorvel::registro {
namespace {

/// Months after its own in which a purchase still gives credit.
constexpr int MESES_CREDITO = 2;

using Indice = std::unordered_map<std::string, std::vector<const EnLibros*>>;

std::string identidad(const EnLibros& e) { return registro::identidad(e.libro, e.doc_libro, e.rut, e.folio); }

Indice indice_de(const Libros& libros) {
    Indice i;
    for (const auto* lista : {&libros.del_mes, &libros.otros})
        for (const EnLibros& e : *lista) i[identidad(e)].push_back(&e);
    return i;
}

/// What differs and by how much; what the lines leave over without a header's word may be split as in the
/// register.
std::string diferencias(const Composicion& c, const EnLibros& e) {
    const std::int64_t exento = e.deducido ? c.exento : e.exento;
    const std::int64_t neto = e.deducido ? e.neto + e.exento - c.exento - c.costo : e.neto;
    struct Par {
        const char* que;
        std::int64_t registro, libros;
    };
    std::string texto;
    for (const Par& p : {Par{"neto", c.neto, neto}, Par{"exento", c.exento, exento}, Par{"IVA", c.iva, e.iva},
                         Par{"otro impuesto", c.otro, e.otro}, Par{"total", c.total, e.total}})
        if (p.registro != p.libros)
            texto += (texto.empty() ? "" : "; ") + std::string(p.que) + " " +
                     mostrar_monto(static_cast<double>(p.registro)) + " en el registro, " +
                     mostrar_monto(static_cast<double>(p.libros)) + " en libros (" +
                     mostrar_monto(static_cast<double>(p.registro - p.libros)) + ")";
    return texto;
}

bool es_resumen(const Documento& d) { return d.rut.empty() || d.folio.empty(); }

/// Why a document that the books do not hold cannot be booked; empty when it can.
std::string impedimento(const Fila& f, Mes mes) {
    const Documento& d = f.doc;
    if (!d.problema.empty()) return d.problema;
    if (f.doc_libro.empty()) return motivo_sin_clase(d.tipo, d.libro);
    if (es_resumen(d)) return "Sin RUT o sin folio: es un resumen, ingréselo en la pantalla";
    if (!d.fecha) return "Sin fecha de documento";
    if (f.c.diferencia != 0)
        return "Los montos no suman el total: diferencia " +
               mostrar_monto(static_cast<double>(f.c.diferencia));
    if (f.c.total == 0) return "Documento sin monto";
    if (std::min({f.c.neto, f.c.exento, f.c.iva, f.c.total}) < 0)
        return "Documento con montos negativos: ingréselo en la pantalla";
    if (mes.desde(*d.fecha) < 0) return "La fecha es posterior al mes del registro";
    if (d.libro == COMPRAS && f.c.iva != 0 && mes.desde(*d.fecha) > MESES_CREDITO)
        return "Fuera del plazo del crédito fiscal: es de más de " + std::to_string(MESES_CREDITO) +
               " meses antes";
    return "";
}

void juzgar(Fila& f, const Indice& libros, Mes mes) {
    const auto hallados = libros.find(registro::identidad(f.doc.libro, f.doc_libro, f.doc.rut, f.doc.folio));
    const bool esta = !f.doc_libro.empty() && !es_resumen(f.doc) && hallados != libros.end();
    if (esta) f.clave = hallados->second.front()->clave;
    if (!esta || !f.doc.problema.empty()) {
        f.detalle = impedimento(f, mes);
        f.estado = f.detalle.empty() ? Estado::nuevo : Estado::no_contabilizable;
        return;
    }
    const auto& vouchers = hallados->second;
    if (vouchers.size() > 1) {
        f.estado = Estado::repetido;
        f.detalle = "Está en " + std::to_string(vouchers.size()) + " comprobantes:";
        for (const EnLibros* e : vouchers)
            f.detalle += (e == vouchers.front() ? " " : ", ") + texto(e->clave);
        return;
    }
    f.detalle = diferencias(f.c, *vouchers.front());
    f.estado = f.detalle.empty() ? Estado::contabilizado : Estado::difiere;
}

Fila fila_que_falta(const EnLibros& e) {
    Fila f;
    f.doc.libro = e.libro;
    f.doc.rut = e.rut;
    f.doc.nombre = e.nombre;
    f.doc.folio = e.folio;
    f.doc.fecha = e.fecha;
    f.doc_libro = e.doc_libro;
    f.c = {.neto = e.neto, .exento = e.exento, .iva = e.iva, .otro = e.otro, .total = e.total};
    f.estado = Estado::falta;
    f.detalle = "Está en libros y no en el archivo";
    f.clave = e.clave;
    return f;
}

} // namespace

const char* texto(Estado e) {
    static constexpr const char* TEXTOS[ESTADOS_FILA] = {
        "nuevo", "contabilizado", "difiere", "repetido", "no contabilizable", "falta en el registro"};
    return TEXTOS[static_cast<std::size_t>(e)];
}

bool se_puede_llenar(const Fila& f) {
    const bool sin_comprobante = f.estado == Estado::nuevo || f.estado == Estado::no_contabilizable;
    return sin_comprobante && !f.doc_libro.empty() && !es_resumen(f.doc) && f.doc.problema.empty() &&
           f.doc.fecha;
}

Libros leer_libros(clsConexion& db, int empresa, const Configuracion& k,
                   const std::vector<Documento>& documentos, Mes mes) {
    Libros l;
    std::set<int> libros;
    for (const Documento& d : documentos) libros.insert(d.libro);
    for (const int libro : libros) {
        auto del_mes = documentos_del_mes(db, empresa, k, libro, mes);
        l.del_mes.insert(l.del_mes.end(), std::make_move_iterator(del_mes.begin()),
                         std::make_move_iterator(del_mes.end()));
    }
    std::vector<Buscado> buscados; // also what the month holds: it may stand in another one too
    for (const Documento& d : documentos)
        if (!es_resumen(d) && !doc_libro_de(d.tipo, d.libro).empty())
            buscados.push_back({d.libro, d.rut, d.folio});
    std::set<std::string> del_mes;
    for (const EnLibros& e : l.del_mes) del_mes.insert(texto(e.clave));
    for (EnLibros& e : documentos_buscados(db, empresa, k, std::move(buscados)))
        if (!del_mes.contains(texto(e.clave))) l.otros.push_back(std::move(e));
    return l;
}

std::vector<Fila> cotejar(const std::vector<Documento>& documentos, const Libros& libros, Mes mes,
                          const std::vector<int>& completos) {
    const Indice indice = indice_de(libros);
    std::vector<Fila> filas;
    filas.reserve(documentos.size());
    std::unordered_map<std::string, const Documento*> en_archivo;
    for (const Documento& d : documentos) {
        Fila f;
        f.doc = d;
        f.c = componer(d);
        f.doc_libro = doc_libro_de(d.tipo, d.libro);
        juzgar(f, indice, mes);
        if (!f.doc_libro.empty() && !es_resumen(d)) {
            const auto [otro, nuevo] =
                en_archivo.try_emplace(registro::identidad(d.libro, f.doc_libro, d.rut, d.folio), &d);
            if (!nuevo) {
                f.estado = Estado::repetido;
                f.detalle = "El mismo documento está en " + otro->second->archivo + ", línea " +
                            std::to_string(otro->second->linea);
            }
        }
        filas.push_back(std::move(f));
    }
    for (const EnLibros& e : libros.del_mes)
        if (std::ranges::find(completos, e.libro) != completos.end() && !en_archivo.contains(identidad(e)))
            filas.push_back(fila_que_falta(e));
    return filas;
}

} // namespace quorvel::registro
