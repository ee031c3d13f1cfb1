// "report": the books of a period as a table, as CSV, JSON or PDF.
#include "app/libros/informes.h"
#include "cli/comandos.h"
#include "dbtools/datos.h"
#include "interchange/archivo_comprobante.h"
#include "oficina/seleccion.h"
#include "oficina/tabla.h"
#include "qt/report/QtReportPrinter.h"
#include "voucher/configuracion.h"

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <memory>
#include <sstream>

namespace quorvel::cli {

namespace {

struct Opciones : oficina::OpcionesOficina {
    std::string libro, desde, hasta, norma, cuenta, forma = "text", archivo;
    bool por_auxiliar = false, sin_cierre = false;
};

struct NombreLibro {
    const char* nombre;
    libros::Libro libro;
};
constexpr NombreLibro LIBROS[] = {{"journal", libros::Libro::diario},
                                  {"ledger", libros::Libro::mayor},
                                  {"balance", libros::Libro::balance},
                                  {"monthly", libros::Libro::mensual}};

/// The whole accounting year unless the line says otherwise.
libros::PedidoLibro pedido(const oficina::Oficina& oficina, const Opciones& o, libros::Libro libro) {
    const auto k = leer_configuracion(*oficina.db, oficina.empresa, RelojSistema{}.hoy());
    const auto desde = oficina::leer_fecha_opcion(o.desde), hasta = oficina::leer_fecha_opcion(o.hasta);
    const int elegido = desde ? anio(*desde) : hasta ? anio(*hasta) : k.anio;
    const std::chrono::year ano{elegido};
    libros::PedidoLibro p{.empresa = oficina.empresa,
                          .desde = desde.value_or(ano / std::chrono::January / 1),
                          .hasta = hasta.value_or(ano / std::chrono::December / 31),
                          .norma = o.norma,
                          .sin_cierre = o.sin_cierre,
                          .cuenta = o.cuenta,
                          .por_auxiliar = o.por_auxiliar};
    if (const auto r = libros::revisar_pedido(p, libro)) mal_uso(r->mensaje);
    return p;
}

std::string en_csv(clsConexion& db, libros::Libro libro, const libros::PedidoLibro& p) {
    std::ostringstream csv;
    (void)libros::escribir_libro_csv(db, libro, p, csv);
    return std::move(csv).str();
}

oficina::TablaTexto en_tabla(const std::string& csv) {
    oficina::TablaTexto tabla;
    std::istringstream lineas(csv);
    for (std::string linea; std::getline(lineas, linea);) tabla.agregar(linea);
    return tabla;
}

Respuesta reportar(const Opciones& o, const NombreLibro& nombre) {
    const bool pdf = o.forma == "pdf";
    if (pdf && o.archivo.empty()) mal_uso("Indique el archivo del PDF con --out");
    const libros::Libro libro = nombre.libro;
    const std::string titulo = libros::titulo_libro(libro);
    const oficina::Oficina oficina = oficina::abrir_oficina(o);
    const libros::PedidoLibro p = pedido(oficina, o, libro);
    const std::string desde = fecha_dmy(p.desde), hasta = fecha_dmy(p.hasta);
    Respuesta r{.frase_es_documento = true};
    r.datos = {{"libro", nombre.nombre}, {"desde", desde}, {"hasta", hasta}};
    if (pdf) {
        const auto aplicacion = qt::aplicacion_sin_ventanas();
        app::escribir_libro_pdf(*oficina.db, libro, p, dbtools::carpeta_datos() / "reports", o.archivo);
    } else if (o.json) {
        r.datos["filas"] = en_tabla(en_csv(*oficina.db, libro, p)).json();
    } else if (o.forma == "csv") {
        r.frase = en_csv(*oficina.db, libro, p);
    } else {
        r.frase = titulo + "  " + oficina.leyenda_empresa() + "  " + desde + " - " + hasta + "\n\n" +
                  en_tabla(en_csv(*oficina.db, libro, p)).texto();
    }
    if (o.archivo.empty()) return r;
    if (!pdf) escribir_archivo(o.archivo, o.json ? r.datos.dump(2) + "\n" : r.frase);
    return {.frase = titulo + " en " + o.archivo, .datos = {{"archivo", o.archivo}}};
}

} // namespace

void agregar_report(CLI::App& app) {
    CLI::App* comando = app.add_subcommand("report", "Libros de un período: diario, mayor, balance");
    const auto o = std::make_shared<Opciones>();
    agregar_oficina(*comando, *o);
    std::map<std::string, const NombreLibro*> libros;
    std::string ayuda;
    for (const NombreLibro& l : LIBROS) {
        libros[l.nombre] = &l;
        ayuda +=
            (ayuda.empty() ? "" : ", ") + std::string(l.nombre) + " (" + libros::titulo_libro(l.libro) + ")";
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

} // namespace quorvel::cli
