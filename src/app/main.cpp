#include "app/StartWindow.h"
#include "app/db/comando_db.h"
#include "app/db/demo.h"
#include "app/demo_run.h"
#include "app/estilo.h"
#include "app/recientes.h"
#include "app/sesion_app.h"
#include "screen/frmQuorvel.h"
#ifdef QUORVEL_DRIVER
#include "driver/driver.h"
#endif

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QMessageBox>
#include <cstdio>
#include <iostream>

namespace quorvel {

namespace {

Tema leer_tema(const std::string& nombre) {
    if (nombre == "claro") return Tema::claro;
    if (nombre == "oscuro") return Tema::oscuro;
    return Tema::sistema;
}

/// Shows the voucher screen until it is closed.
int trabajar(const Eleccion_inicial& eleccion) {
    qt::QtEscritorio escritorio;
    qt::QtReportPrinter impresor;
    const RelojSistema reloj;
    try {
        SesionApp sesion(eleccion, escritorio, impresor, reloj, carpeta_personal());
        sesion.mostrar();
        const auto cerrar = sesion.pantalla().Closed.connect([] { QApplication::quit(); });
        return sesion.pantalla().visible() ? QApplication::exec() : 0;
    } catch (const std::exception& e) {
        QMessageBox::critical(nullptr, "Mensaje", QString::fromUtf8(e.what()));
        return 1;
    }
}

int elegir_y_trabajar() {
    const auto carpeta = carpeta_personal();
    std::error_code ignorado;
    std::filesystem::create_directories(carpeta, ignorado);
    const auto recientes = carpeta / "recientes.txt";
    // The first start has something to show: the demonstration company.
    const auto demo = carpeta / "demo.db";
    if (leer_recientes(recientes).empty()) {
        try {
            if (!std::filesystem::exists(demo)) crear_demo("sqlite:" + demo.string());
            anotar_reciente(recientes, "sqlite:" + demo.string());
        } catch (const std::exception& e) {
            std::cerr << e.what() << '\n';
        }
    }
    StartWindow inicio(carpeta);
    if (inicio.exec() != QDialog::Accepted) return 0;
    inicio.hide();
    return trabajar(inicio.eleccion());
}

struct Opciones {
    std::string tema = "sistema", conexion, reporte, salida = "out";
    int empresa = 1, usuario = 1;
};

int con_ventanas(int argc, char** argv, const Opciones& opciones, const CLI::App& app) {
    if (app.got_subcommand("demo-run") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication aplicacion(argc, argv);
    QApplication::setApplicationName("quorvel");
    QApplication::setQuitOnLastWindowClosed(false);
    aplicar_estilo(aplicacion, leer_tema(opciones.tema));
    if (app.got_subcommand("demo-run")) return demo_run(opciones.salida);
    if (app.got_subcommand("show")) {
        const std::filesystem::path reporte = opciones.reporte.empty()
                                                  ? carpeta_personal() / "print.db"
                                                  : std::filesystem::path(opciones.reporte);
        return trabajar({opciones.conexion, reporte, opciones.empresa, opciones.usuario});
    }
    return elegir_y_trabajar();
}

int principal(int argc, char** argv) {
    CLI::App app("Quorvel: comprobantes contables");
    Opciones o;
    app.require_subcommand(0, 1);
    app.add_option("--tema", o.tema, "claro, oscuro o sistema")
        ->check(CLI::IsMember({"claro", "oscuro", "sistema"}));
    auto* show = app.add_subcommand("show", "Abre la pantalla de comprobantes de una empresa");
    show->add_option("--db", o.conexion, "Conexión: sqlite:ARCHIVO o postgresql://…")->required();
    show->add_option("--reportdb", o.reporte, "Base de informes, de nombre print.db");
    show->add_option("--company", o.empresa, "Código de la empresa");
    show->add_option("--user", o.usuario, "Código del usuario");
    auto* demo = app.add_subcommand("demo-run", "Ingresa, graba, busca e imprime un comprobante de muestra");
    demo->add_option("--out", o.salida, "Carpeta de las imágenes y del PDF");
    agregar_comando_db(app);
#ifdef QUORVEL_DRIVER
    auto* driver = app.add_subcommand("driver", "Conduce las pantallas por líneas JSON, sin ventanas");
#endif
    try {
        app.parse(argc, argv);
    } catch (const CLI::Error& e) {
        return app.exit(e);
    }
    if (app.got_subcommand("db")) return 0;
#ifdef QUORVEL_DRIVER
    if (driver->parsed()) {
        OpcionesDriver opciones;
        opciones.definiciones = carpeta_datos() / "reports";
        opciones.impresor = [](const std::filesystem::path& carpeta,
                               std::function<void(const std::string&)> impreso) {
            auto impresor = std::make_unique<qt::PdfReportPrinter>(carpeta);
            impresor->on_printed = std::move(impreso);
            return impresor;
        };
        return run_driver(std::cin, std::cout, opciones);
    }
#endif
    return con_ventanas(argc, argv, o, app);
}

} // namespace

} // namespace quorvel

int main(int argc, char** argv) { return quorvel::principal(argc, argv); }
