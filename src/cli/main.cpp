#include "app/StartWindow.h"
#include "app/anfitrion.h"
#include "app/estilo.h"
#include "app/idioma.h"
#include "app/recientes.h"
#include "app/zoom.h"
#include "cli/castellano.h"
#include "cli/comando_db.h"
#include "cli/comandos.h"
#include "dbtools/base.h"
#include "demo/demo.h"
#include "demo/registro_demo.h"
#include "demo_run/demo_run.h"
#include "driver/driver.h"
#include "interchange/archivo_comprobante.h"
#include "qt/report/QtReportPrinter.h"

#include <CLI/CLI.hpp>
#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <iostream>

namespace quorvel::cli {

namespace {

app::Tema leer_tema(const std::string& nombre) {
    if (nombre == "claro") return app::Tema::claro;
    if (nombre == "oscuro") return app::Tema::oscuro;
    return app::Tema::sistema;
}

/// The demonstration company, and beside it a register of its present month.
void sembrar_demo(const std::filesystem::path& base) {
    demo::crear_demo("sqlite:" + base.string());
    const demo::RegistroDemo r =
        demo::registro_demo(*abrir_sesion("sqlite:" + base.string()), RelojSistema{}.hoy());
    escribir_archivo(base.parent_path() / r.nombre, r.bytes);
}

int elegir_y_trabajar() {
    const auto carpeta = dbtools::carpeta_personal();
    std::error_code ignorado;
    std::filesystem::create_directories(carpeta, ignorado);
    const auto recientes = carpeta / "recientes.txt";
    // The first start has something to show: the demonstration company.
    const auto demo = carpeta / "demo.db";
    if (app::leer_recientes(recientes).empty()) {
        try {
            if (!std::filesystem::exists(demo)) sembrar_demo(demo);
            app::anotar_reciente(recientes, "sqlite:" + demo.string());
        } catch (const std::exception& e) {
            std::cerr << e.what() << '\n';
        }
    }
    while (true) {
        app::StartWindow inicio(carpeta);
        if (inicio.exec() != QDialog::Accepted) return 0;
        inicio.hide();
        if (trabajar(inicio.eleccion()) == app::FinPantalla::salir) return 0;
    }
}

struct Opciones {
    std::string tema = "sistema", conexion, reporte, salida = "out";
    int empresa = 1, usuario = 1;
};

bool hay_pantalla() {
    constexpr const char* LUGARES[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return std::ranges::any_of(LUGARES, [](const char* v) { return !qEnvironmentVariableIsEmpty(v); });
}

int con_ventanas(int argc, char** argv, const Opciones& opciones, const CLI::App& app) {
    if (!hay_pantalla()) {
        if (!app.got_subcommand("demo-run")) {
            std::cerr
                << "No hay una pantalla donde abrir ventanas. quorvel --help muestra las órdenes que no la "
                   "necesitan\n";
            return oficina::SIN_DATOS;
        }
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication aplicacion(argc, argv);
    QApplication::setApplicationName("quorvel");
    QApplication::setQuitOnLastWindowClosed(false);
    app::hablar_castellano(aplicacion);
    app::aplicar_estilo(aplicacion, leer_tema(opciones.tema));
    if (app.got_subcommand("demo-run")) return demo_run::demo_run(opciones.salida);
    new app::Zoom(dbtools::carpeta_personal(), &aplicacion);
    if (app.got_subcommand("show")) {
        const std::filesystem::path reporte = opciones.reporte.empty()
                                                  ? dbtools::carpeta_personal() / "print.db"
                                                  : std::filesystem::path(opciones.reporte);
        const app::FinPantalla fin = app::trabajar(
            {dbtools::normalizar_conexion(opciones.conexion), reporte, opciones.empresa, opciones.usuario});
        if (fin == app::FinPantalla::otra_empresa) return elegir_y_trabajar();
        return fin == app::FinPantalla::error ? oficina::SIN_DATOS : oficina::BIEN;
    }
    return elegir_y_trabajar();
}

int principal(int argc, char** argv) {
    CLI::App app("Quorvel: comprobantes contables", "quorvel");
    hablar_castellano(app);
    Opciones o;
    app.require_subcommand(0, 1);
    app.set_version_flag("--version", "Quorvel " QUORVEL_VERSION, "Muestra la versión");
    app.add_option("--tema", o.tema, "claro, oscuro o sistema")
        ->check(CLI::IsMember({"claro", "oscuro", "sistema"}));
    auto* show = app.add_subcommand("show", "Abre la pantalla de comprobantes de una empresa");
    show->add_option("--db", o.conexion, "sqlite:RUTA, una ruta o postgresql://…")->required();
    show->add_option("--reportdb", o.reporte, "Base de informes, de nombre print.db");
    show->add_option("--company", o.empresa, "Código de la empresa");
    show->add_option("--user", o.usuario, "Código del usuario");
    auto* demo =
        app.add_subcommand("demo-run", "Trabaja por teclas en una empresa de muestra y deja imágenes y PDF");
    demo->add_option("--out", o.salida, "Carpeta de las imágenes y de los PDF");
    agregar_comando_db(app);
    agregar_import(app);
    agregar_check(app);
    agregar_export(app);
    agregar_print(app);
    agregar_report(app);
    agregar_register(app);
    auto* driver = app.add_subcommand("driver", "Conduce las pantallas por líneas JSON, sin ventanas");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Error& e) {
        const int codigo = app.exit(e);
        const bool de_un_comando = dynamic_cast<const CLI::RuntimeError*>(&e) != nullptr;
        return codigo == 0 || de_un_comando ? codigo : oficina::MAL_USO;
    }
    for (const char* comando : {"db", "import", "check", "export", "print", "report", "register"})
        if (app.got_subcommand(comando)) return oficina::BIEN;
    if (driver->parsed()) {
        OpcionesDriver opciones;
        opciones.definiciones = dbtools::carpeta_datos() / "reports";
        opciones.impresor = [](const std::filesystem::path& carpeta,
                               std::function<void(const std::string&)> impreso) {
            auto impresor = std::make_unique<qt::PdfReportPrinter>(carpeta);
            impresor->on_printed = std::move(impreso);
            return impresor;
        };
        return run_driver(std::cin, std::cout, opciones);
    }
    return con_ventanas(argc, argv, o, app);
}

} // namespace

} // namespace quorvel::cli

int main(int argc, char** argv) { return quorvel::cli::principal(argc, argv); }
