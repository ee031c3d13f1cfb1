// "report": the books of a period as a table, as CSV, JSON or PDF.
#include "app/oficina/comandos.h"
#include "app/oficina/seleccion.h"
#include "app/oficina/tabla.h"
#include "interchange/archivo_comprobante.h"
#include "libros/balance.h"
#include "libros/diario.h"
#include "libros/mayor.h"
#include "libros/mensual.h"
#include "qt/report/QtReportPrinter.h"
#include "qt/report/painting.h"
#include "voucher/configuracion.h"

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <memory>
#include <sstream>

namespace quorvel {

namespace {

struct Opciones : OpcionesOficina {
    std::string libro, desde, hasta, norma, cuenta, forma = "text", archivo;
    bool por_auxiliar = false, sin_cierre = false;
};
using OyeLinea = std::function<void(const std::string& csv)>;

void diario(clsConexion& db, const PedidoLibro& p, const Opciones&, const OyeLinea& oye) {
    oye(titulos_diario_csv());
    (void)recorrer_diario(db, p, [&](const RenglonDiario& r) {
        oye(diario_csv(r));
        return true;
    });
}

void mayor(clsConexion& db, const PedidoLibro& p, const Opciones& o, const OyeLinea& oye) {
    oye(titulos_mayor_csv());
    for (const CuentaMayor& c : leer_mayor(db, p, o.por_auxiliar)) {
        if (!o.cuenta.empty() && c.centro != o.cuenta) continue;
        oye(mayor_csv(c));
        const SeleccionMayor s{c.centro, o.por_auxiliar ? std::optional(c.auxiliar) : std::nullopt};
        (void)recorrer_movimientos(db, p, s, c.anterior, [&](const Movimiento& m) {
            oye(mayor_csv(c, m));
            return true;
        });
    }
}

void por_lineas(const std::string& csv, const OyeLinea& oye) {
    std::istringstream lineas(csv);
    for (std::string linea; std::getline(lineas, linea);) oye(linea);
}
void balance(clsConexion& db, const PedidoLibro& p, const Opciones&, const OyeLinea& oye) {
    por_lineas(balance_csv(leer_balance(db, p)), oye);
}
void mensual(clsConexion& db, const PedidoLibro& p, const Opciones&, const OyeLinea& oye) {
    por_lineas(totales_mensuales_csv(leer_totales_mensuales(db, p.empresa, anio(p.desde))), oye);
}

struct Libro {
    const char *nombre, *ayuda;
    bool en_un_anio;
    void (*leer)(clsConexion&, const PedidoLibro&, const Opciones&, const OyeLinea&);
};
constexpr Libro LIBROS[] = {
    {"journal", "Libro diario", false, diario},
    {"ledger", "Libro mayor", true, mayor},
    {"balance", "Balance de ocho columnas", true, balance},
    {"monthly", "Totales de cada mes por libro", true, mensual},
};

/// The whole accounting year unless the line says otherwise.
PedidoLibro pedido(const Oficina& oficina, const Opciones& o, bool en_un_anio) {
    const auto k = leer_configuracion(*oficina.db, oficina.empresa, RelojSistema{}.hoy());
    const auto desde = leer_fecha_opcion(o.desde), hasta = leer_fecha_opcion(o.hasta);
    const int elegido = desde ? anio(*desde) : hasta ? anio(*hasta) : k.anio;
    const std::chrono::year ano{elegido};
    PedidoLibro p{.empresa = oficina.empresa,
                  .desde = desde.value_or(ano / std::chrono::January / 1),
                  .hasta = hasta.value_or(ano / std::chrono::December / 31),
                  .norma = o.norma,
                  .sin_cierre = o.sin_cierre};
    if (const auto r = revisar_pedido(p, en_un_anio)) mal_uso(r->mensaje);
    return p;
}

Respuesta reportar(const Opciones& o, const Libro& libro) {
    const bool pdf = o.forma == "pdf", csv = o.forma == "csv";
    if (pdf && o.archivo.empty()) mal_uso("Indique el archivo del PDF con --out");
    const Oficina oficina = abrir_oficina(o);
    const PedidoLibro p = pedido(oficina, o, libro.en_un_anio);
    const std::string periodo = fecha_dmy(p.desde) + " - " + fecha_dmy(p.hasta);
    Respuesta r{.frase_es_documento = true};
    r.datos = {{"libro", libro.nombre}, {"desde", fecha_dmy(p.desde)}, {"hasta", fecha_dmy(p.hasta)}};
    TablaTexto tabla;
    libro.leer(*oficina.db, p, o, [&](const std::string& linea) {
        if (csv && !o.json)
            r.frase += linea + "\n"; // a long journal never stands in memory twice
        else
            tabla.agregar(linea);
    });
    if (pdf) {
        const auto aplicacion = qt::aplicacion_sin_ventanas();
        report::Table hoja = tabla.para_papel();
        hoja.title = libro.ayuda;
        hoja.subtitle = oficina.leyenda_empresa() + "   " + periodo;
        qt::write_pdf(report::compose_table(hoja, qt::text_width), o.archivo, hoja.title);
    } else if (o.json) {
        r.datos["filas"] = tabla.json();
    } else if (!csv) {
        r.frase = std::string(libro.ayuda) + "  " + oficina.leyenda_empresa() + "  " + periodo + "\n\n" +
                  tabla.texto();
    }
    if (o.archivo.empty()) return r;
    if (!pdf) escribir_archivo(o.archivo, o.json ? r.datos.dump(2) + "\n" : r.frase);
    return {.frase = std::string(libro.ayuda) + " en " + o.archivo, .datos = {{"archivo", o.archivo}}};
}

} // namespace

void agregar_report(CLI::App& app) {
    CLI::App* comando = app.add_subcommand("report", "Libros de un período: diario, mayor, balance");
    const auto o = std::make_shared<Opciones>();
    agregar_oficina(*comando, *o);
    std::map<std::string, const Libro*> libros;
    std::string ayuda;
    for (const Libro& l : LIBROS) {
        libros[l.nombre] = &l;
        ayuda += (ayuda.empty() ? "" : ", ") + std::string(l.nombre) + " (" + l.ayuda + ")";
    }
    comando->add_option("LIBRO", o->libro, ayuda)
        ->required()
        ->check(CLI::IsMember({"journal", "ledger", "balance", "monthly"}));
    comando->add_option("--from", o->desde, "Desde, dd/mm/aaaa; si falta, el comienzo del año");
    comando->add_option("--to", o->hasta, "Hasta, dd/mm/aaaa; si falta, el fin del año");
    comando->add_option("--norm", o->norma, "1 tributaria, 2 IFRS; si falta, todos los comprobantes")
        ->check(CLI::IsMember({"0", "1", "2"}));
    comando->add_option("--account", o->cuenta, "Mayor de una sola cuenta");
    comando->add_flag("--by-auxiliary", o->por_auxiliar, "Mayor con los auxiliares por separado");
    comando->add_flag("--without-closing", o->sin_cierre, "Sin el comprobante de cierre anual");
    comando->add_option("--format", o->forma, "text, csv o pdf")
        ->check(CLI::IsMember({"text", "csv", "pdf"}));
    comando->add_option("--out", o->archivo, "Archivo en vez de la salida");
    al_ejecutar(*comando, *o, [o, libros] { return reportar(*o, *libros.at(o->libro)); });
}

} // namespace quorvel
