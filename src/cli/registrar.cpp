// "register": files of the tax authority's register held against the books, and into them.
#include "assistants/libros.h"
#include "cli/comandos.h"
#include "dbtools/avance.h"
#include "interchange/archivo_comprobante.h"
#include "registro/bandeja.h"
#include "registro/clases.h"
#include "text/numeros.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace quorvel::cli {

namespace {

using namespace registro;
using nlohmann::json;

struct OpcionesRegistro : oficina::OpcionesOficina {
    std::vector<std::string> archivos;
    std::string mes, documento;
    bool contabilizar = false, simular = false;
};

const char* nombre(Estado e) { return registro::texto(e); }

json datos_de(const Bandeja& b, const Fila& f) {
    json j{{"estado", nombre(f.estado)},
           {"libro", TEXTOS_LIBRO.at(static_cast<std::size_t>(f.doc.libro))},
           {"tipo", f.doc.tipo},
           {"doc_libro", f.doc_libro},
           {"rut", f.doc.rut},
           {"nombre", f.doc.nombre},
           {"folio", f.doc.folio},
           {"fecha", f.doc.fecha ? fecha_dmy(*f.doc.fecha) : ""},
           {"neto", f.c.neto},
           {"exento", f.c.exento},
           {"iva", f.c.iva},
           {"otro", f.c.otro},
           {"total", f.c.total},
           {"detalle", f.detalle}};
    if (f.estado != Estado::falta) {
        j["situacion"] = registro::texto(f.doc.situacion);
        j["archivo"] = f.doc.archivo;
        j["linea"] = f.doc.linea;
    }
    if (f.clave) j["comprobante"] = registro::texto(*f.clave);
    if (const Propuesta& p = b.propuesta(f); f.estado == Estado::nuevo && !p.cuenta.empty()) {
        j["cuenta"] = p.cuenta;
        if (p.de) j["segun"] = registro::texto(*p.de);
    }
    return j;
}

json montos(const Montos& m) {
    return {
        {"cantidad", m.cantidad}, {"neto", m.neto}, {"exento", m.exento}, {"iva", m.iva}, {"otro", m.otro}};
}

json datos_de(const LineaPrueba& l) {
    return {{"libro", TEXTOS_LIBRO.at(static_cast<std::size_t>(l.libro))},
            {"clase", l.clase},
            {"registro", montos(l.registro)},
            {"libros", montos(l.libros)},
            {"diferencia", montos(l.diferencia())}};
}

std::string pesos(std::int64_t n) { return Decimal(n).formato("#,##0"); }

std::string frase_de(const LineaPrueba& l) {
    const Montos d = l.diferencia();
    const std::string que =
        l.cuadra() ? "0"
                   : cantidad(static_cast<std::size_t>(std::abs(d.cantidad)), "documento", "documentos") +
                         ", neto " + pesos(d.neto) + ", exento " + pesos(d.exento) + ", IVA " + pesos(d.iva) +
                         ", otro " + pesos(d.otro);
    return std::string(TEXTOS_LIBRO.at(static_cast<std::size_t>(l.libro))) + " " + l.clase + ": " +
           pesos(l.registro.cantidad) + " en el registro, " + pesos(l.libros.cantidad) +
           " en libros, diferencia " + que + "\n";
}

/// What a person has to look at: all but what is booked and what is new.
oficina::Problema problema_de(const Fila& f) {
    const std::string documento = nombre_clase(f.doc.tipo) + " " + f.doc.folio + " de " + f.doc.rut;
    const bool falta = f.estado == Estado::falta;
    return {falta ? registro::texto(*f.clave) : f.doc.archivo, f.doc.linea, nombre(f.estado),
            (falta ? f.doc_libro + " " + f.doc.folio + " de " + f.doc.rut : documento) +
                (f.detalle.empty() ? "" : ": " + f.detalle)};
}

bool es_problema(const Fila& f) {
    if (f.doc.situacion != Situacion::registro) return false;
    return f.estado == Estado::nuevo ? !f.detalle.empty() : f.estado != Estado::contabilizado;
}

/// The files that can be read. @return what is wrong with the others
std::vector<oficina::Problema> leer(Bandeja& b, const std::vector<std::string>& archivos) {
    std::vector<oficina::Problema> problemas;
    for (const std::string& archivo : archivos) try {
            b.agregar(archivo, leer_archivo(archivo));
        } catch (const ErrorArchivo& e) {
            problemas.push_back({archivo, 0, "", e.what(), true});
        } catch (const ErrorRegistro& e) {
            problemas.push_back({archivo, 0, "", e.what(), true});
        }
    return problemas;
}

Balance contabilizar(Bandeja& b, bool grabar) {
    dbtools::BarraAvance barra("Contabilizando", static_cast<long>(b.marcar_nuevos()));
    const Balance hecho = b.contabilizar(
        [&](long hechos, long) {
            barra.mostrar(hechos);
            return true;
        },
        grabar);
    if (!hecho.error.empty())
        throw std::runtime_error(hecho.error + " (" +
                                 cantidad(hecho.contabilizados, "documento quedó contabilizado",
                                          "documentos quedaron contabilizados") +
                                 ")");
    return hecho;
}

Respuesta registrar(const OpcionesRegistro& o) {
    oficina::Oficina oficina = oficina::abrir_oficina(o);
    Bandeja b(*oficina.db, o.empresa, o.usuario, RelojSistema{}.hoy());
    if (!o.mes.empty() && leer_mes(o.mes).anio == 0) mal_uso("El mes se escribe MM/AAAA");
    Respuesta r{.frase = "", .problemas = leer(b, o.archivos)};
    if (!r.problemas.empty()) { // half a month is no month
        r.frase = "No se leyó el registro";
        return r;
    }
    if (!o.mes.empty()) b.poner_mes(leer_mes(o.mes));
    if (!o.documento.empty()) b.poner_documento(o.documento);
    b.cotejar();
    Balance hecho;
    const bool grabar = o.contabilizar && !o.simular;
    if (o.contabilizar) hecho = contabilizar(b, grabar);
    r.datos["mes"] = registro::texto(b.mes());
    r.datos["contabilizados"] = grabar ? hecho.contabilizados : 0;
    r.datos["avisos"] = b.avisos();
    for (const Fila& f : b.filas()) {
        r.datos["filas"].push_back(datos_de(b, f));
        if (es_problema(f)) r.problemas.push_back(problema_de(f));
    }
    if (grabar && hecho.contabilizados > 0) b.cotejar(); // the proof is of the books as they are now
    for (const LineaPrueba& l : b.prueba()) {
        r.datos["prueba"].push_back(datos_de(l));
        r.frase += frase_de(l);
    }
    for (const std::string& aviso : b.avisos()) r.frase += aviso + "\n";
    r.frase += "Mes " + registro::texto(b.mes()) + ": " + b.resumen();
    if (o.contabilizar)
        r.frase += "; " + cantidad(hecho.contabilizados, "documento", "documentos") +
                   (grabar ? " en la base ahora" : " sin observaciones; no se grabó nada");
    return r;
}

} // namespace

void agregar_register(CLI::App& app) {
    CLI::App* comando =
        app.add_subcommand("register", "Coteja el registro de compras y ventas con los libros");
    const auto o = std::make_shared<OpcionesRegistro>();
    agregar_oficina(*comando, *o);
    comando->add_option("ARCHIVO", o->archivos, "Archivos del registro (.csv) de un mes")->required();
    comando->add_flag("--book", o->contabilizar, "Contabiliza los documentos nuevos, cada uno por sí");
    comando->add_flag("--dry-run", o->simular, "Con --book: revisa todo y no graba nada");
    comando->add_option("--month", o->mes, "Mes del registro, MM/AAAA; sin él, el del nombre del archivo");
    comando->add_option("--document", o->documento,
                        "Tipo de los comprobantes; sin él, el último usado en el libro");
    al_ejecutar(*comando, *o, [o] { return registrar(*o); });
}

} // namespace quorvel::cli
