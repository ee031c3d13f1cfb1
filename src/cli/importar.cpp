// "import" and "check": voucher files into the books, or only held against them.
#include "cli/comandos.h"
#include "dbtools/revisar.h"
#include "oficina/lote.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace quorvel::cli {

namespace {

struct Opciones : oficina::OpcionesOficina {
    std::vector<std::string> archivos;
    bool simular = false, renumerar = false;
};

nlohmann::json datos_de(const oficina::LoteArchivos& lote) {
    nlohmann::json lista = nlohmann::json::array();
    for (const oficina::EnLote& e : lote.comprobantes()) {
        nlohmann::json c{{"archivo", e.archivo},
                         {"f_comp", fecha_dmy(e.clave.f_comp)},
                         {"documento", e.clave.documento},
                         {"numero", e.clave.num_docum},
                         {"lineas", e.lineas},
                         {"total", e.total}};
        if (!e.numero_archivo.empty()) c["numero_archivo"] = e.numero_archivo;
        lista.push_back(std::move(c));
    }
    return {{"comprobantes", lista}};
}

std::string renumerados(const oficina::LoteArchivos& lote) {
    std::string texto;
    for (const oficina::EnLote& e : lote.comprobantes())
        if (!e.numero_archivo.empty())
            texto += e.archivo + ": número " + e.numero_archivo + " pasa a " + e.clave.num_docum + "\n";
    return texto;
}

Respuesta importar(const Opciones& o, bool grabar) {
    oficina::Oficina oficina = oficina::abrir_oficina(o);
    oficina::LoteArchivos lote(oficina, RelojSistema{}.hoy(), o.renumerar);
    lote.revisar(o.archivos);
    if (lote.problemas().empty() && grabar) lote.grabar();
    Respuesta r{.frase = "", .problemas = lote.problemas(), .datos = datos_de(lote)};
    const bool bien = r.problemas.empty();
    const std::string n = cantidad(lote.comprobantes().size(), "comprobante", "comprobantes");
    r.datos["grabados"] = bien && grabar ? lote.comprobantes().size() : 0;
    if (!bien)
        r.frase = cantidad(r.problemas.size(), "problema", "problemas") + " en " +
                  cantidad(o.archivos.size(), "archivo", "archivos") +
                  (grabar ? "; no se grabó ningún comprobante" : "");
    else
        r.frase = renumerados(lote) + n + (grabar ? " en la base" : " sin observaciones; no se grabó nada");
    return r;
}

Respuesta revisar_base(const std::string& conexion) {
    Respuesta r;
    for (const std::string& hallazgo : dbtools::revisar(conexion))
        r.problemas.push_back({"", 0, "", hallazgo});
    r.frase = r.problemas.empty() ? "Base de datos sin observaciones"
                                  : cantidad(r.problemas.size(), "observación", "observaciones");
    return r;
}

} // namespace

void agregar_import(CLI::App& app) {
    CLI::App* comando = app.add_subcommand("import", "Graba comprobantes desde archivos, todos o ninguno");
    const auto o = std::make_shared<Opciones>();
    agregar_oficina(*comando, *o);
    comando->add_option("ARCHIVO", o->archivos, "Archivos de comprobantes (.csv)")->required();
    comando->add_flag("--dry-run", o->simular, "Revisa todo y no graba nada");
    comando->add_flag("--renumber", o->renumerar, "Da el número siguiente al que falta o ya está usado");
    al_ejecutar(*comando, *o, [o] { return importar(*o, !o->simular); });
}

void agregar_check(CLI::App& app) {
    CLI::App* comando = app.add_subcommand("check", "Revisa archivos de comprobantes, o la base misma");
    const auto o = std::make_shared<Opciones>();
    agregar_oficina(*comando, *o);
    comando->add_option("ARCHIVO", o->archivos, "Archivos de comprobantes; sin ellos se revisa la base");
    al_ejecutar(*comando, *o,
                [o] { return o->archivos.empty() ? revisar_base(o->conexion) : importar(*o, false); });
}

} // namespace quorvel::cli
