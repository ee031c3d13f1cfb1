// "export": saved vouchers as files of a folder, all or none.
#include "cli/entrega.h"
#include "interchange/archivo_comprobante.h"
#include "platform/db/literal.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace quorvel::cli {

namespace {

struct Opciones : oficina::OpcionesOficina {
    oficina::Seleccion cuales;
    std::string carpeta;
    bool reemplazar = false;
};

/// The entry of the currency list, as the screen's own export writes it.
std::string moneda(clsConexion& db, const std::string& codigo) {
    const auto rs = db.NewRecord("select * from admmonedas where moneda=" + sql_texto(codigo));
    return rs->eof() ? codigo : codigo + " " + rs->fields("n_moneda").Value.text();
}

Respuesta exportar(const Opciones& o) {
    const oficina::Oficina oficina = oficina::abrir_oficina(o);
    Entrega entrega(o.carpeta, ".csv", o.reemplazar);
    Respuesta r = para_cada_uno("Exportando", oficina::elegir(oficina, o.cuales), [&](const Clave& k) {
        const Comprobante c = oficina::leer_comprobante(*oficina.db, k);
        const std::string bytes =
            bytes_de_comprobante(c, oficina.leyenda_empresa(), moneda(*oficina.db, c.moneda));
        escribir_archivo(entrega.lugar(k), bytes);
    });
    if (!r.problemas.empty()) return r;
    entrega.entregar();
    r.frase += " en " + o.carpeta;
    r.datos["archivos"] = entrega.nombres();
    return r;
}

} // namespace

void agregar_export(CLI::App& app) {
    CLI::App* comando = app.add_subcommand("export", "Escribe comprobantes grabados, un archivo cada uno");
    const auto o = std::make_shared<Opciones>();
    agregar_oficina(*comando, *o);
    oficina::agregar_seleccion(*comando, o->cuales);
    comando->add_option("--out", o->carpeta, "Carpeta de los archivos")->required();
    comando->add_flag("--overwrite", o->reemplazar, "Reemplaza los archivos que ya existan");
    al_ejecutar(*comando, *o, [o] { return exportar(*o); });
}

} // namespace quorvel::cli
