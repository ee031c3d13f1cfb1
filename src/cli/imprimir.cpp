// "print": saved vouchers on paper form, as PDF files of a folder or as one file.
#include "app/sesion_app.h"
#include "cli/entrega.h"
#include "interchange/imprimir_comprobante.h"
#include "platform/db/literal.h"
#include "platform/report/definition.h"
#include "screen/permisos.h"
#include "voucher/cargar.h"

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <memory>

namespace quorvel::cli {

namespace fs = std::filesystem;

namespace {

struct Opciones : oficina::OpcionesOficina {
    oficina::Seleccion cuales;
    std::string carpeta, archivo;
    bool reemplazar = false;
};

/// Stages vouchers in a report database of its own, so that an open screen keeps its staging rows.
class Imprenta {
public:
    explicit Imprenta(const oficina::Oficina& oficina)
        : oficina_(oficina), reporte_(abrir_sesion_informes((espera_.ruta() / "print.db").string())),
          config_(leer_configuracion(*oficina.db, oficina.empresa, reloj_.hoy())) {
        crear_tablas_impresion(*reporte_);
        maestros_.reabrir(*oficina.db, false);
        // the person's own papers first
        const fs::path propias = dbtools::carpeta_personal();
        if (fs::exists(propias / "ctcQuorvel.rpt"))
            (void)report::instalar_definiciones(espera_.ruta(), propias);
        (void)report::instalar_definiciones(espera_.ruta(), dbtools::carpeta_datos() / "reports");
    }
    report::Layout componer(const Clave& k) {
        const auto c =
            leer_cabecera(*oficina_.db, k.empresa, k.f_comp, k.documento, k.num_docum, k.subsistema);
        if (!c)
            throw std::runtime_error("Otra persona eliminó el comprobante " +
                                     oficina::nombre_de_comprobante(k));
        ImpresionComprobante i{.clave = k,
                               .empresa = oficina_.leyenda_empresa(),
                               .usuario = oficina_.leyenda_usuario(),
                               .documento = documento(k.documento),
                               .concepto = c->concepto,
                               .hora = reloj_.hora(),
                               .elaborado = config_.elaborado,
                               .revisado = config_.revisado,
                               .aprobado = config_.aprobado};
        (void)preparar_comprobante(*oficina_.db, *reporte_, i, maestros_[Maestro::auxiliares]);
        return qt::compose_job({.definition = archivo_informe(reporte_->Name(), "", "ctcQuorvel"),
                                .table = "ctcQuorvel",
                                .session = reporte_.get(),
                                .title = ""});
    }

private:
    std::string documento(const std::string& codigo) {
        const auto rs =
            oficina_.db->NewRecord("select * from admdocumen where documento=" + sql_texto(codigo));
        return rs->eof() ? codigo : codigo + " " + rs->fields("n_documento").Value.text();
    }
    const oficina::Oficina& oficina_;
    oficina::CarpetaTemporal espera_;
    RelojSistema reloj_;
    std::unique_ptr<clsConexion> reporte_;
    Configuracion config_;
    Maestros maestros_;
};

void juntar(report::Layout& todas, report::Layout otra) {
    if (todas.pages.empty()) return std::swap(todas, otra);
    std::ranges::move(otra.pages, std::back_inserter(todas.pages));
}

Respuesta imprimir(const Opciones& o) {
    if (o.carpeta.empty() == o.archivo.empty()) mal_uso("Indique --out CARPETA o --pdf ARCHIVO");
    const oficina::Oficina oficina = abrir_oficina(o);
    if (!permisos(oficina.permiso)[PERMISO_IMPRIMIR])
        throw std::runtime_error("El usuario " + oficina.leyenda_usuario() + " no tiene permiso de imprimir");
    const auto aplicacion = qt::aplicacion_sin_ventanas();
    Imprenta imprenta(oficina);
    const fs::path unico = o.archivo;
    Entrega entrega(o.archivo.empty() ? fs::path(o.carpeta) : fs::absolute(unico).parent_path(), ".pdf",
                    o.reemplazar);
    report::Layout todas;
    Respuesta r = para_cada_uno("Imprimiendo", oficina::elegir(oficina, o.cuales), [&](const Clave& k) {
        report::Layout hoja = imprenta.componer(k);
        if (o.archivo.empty())
            qt::write_pdf(hoja, entrega.lugar(k), oficina::nombre_de_comprobante(k));
        else
            juntar(todas, std::move(hoja));
    });
    if (!r.problemas.empty()) return r;
    if (!o.archivo.empty()) qt::write_pdf(todas, entrega.lugar(unico.filename().string()), "Comprobantes");
    entrega.entregar();
    r.frase += " en " + (o.archivo.empty() ? o.carpeta : o.archivo);
    r.datos["archivos"] = entrega.nombres();
    return r;
}

} // namespace

void agregar_print(CLI::App& app) {
    CLI::App* comando = app.add_subcommand("print", "Imprime comprobantes grabados en archivos PDF");
    const auto o = std::make_shared<Opciones>();
    agregar_oficina(*comando, *o);
    oficina::agregar_seleccion(*comando, o->cuales);
    comando->add_option("--out", o->carpeta, "Carpeta, un archivo por comprobante");
    comando->add_option("--pdf", o->archivo, "Un solo archivo con todos");
    comando->add_flag("--overwrite", o->reemplazar, "Reemplaza los archivos que ya existan");
    al_ejecutar(*comando, *o, [o] { return imprimir(*o); });
}

} // namespace quorvel::cli
