#pragma once
#include "apoyo/comprobante.h"
#include "apoyo/empresa.h"
#include "app/sesion_app.h"
#include "app/teclado.h"
#include "demo/demo.h"
#include "qt/QtEscritorio.h"
#include "screen/frmQuorvel.h"

namespace quorvel::app {

namespace fs = std::filesystem;
using namespace demo;
using namespace apoyo;

/// A demonstration company of one's own, its screens and what each leaves behind.
struct Puesto {
    const fs::path carpeta = carpeta_nueva();
    const std::string conexion = "sqlite:" + (carpeta / "demo.db").string();
    const RelojFijo reloj{fecha(2024, 3, 31)};
    const Eleccion_inicial eleccion{conexion, carpeta / "print.db", 1, 1};
    qt::QtReportPrinter impresor;

    Puesto() { demo::crear_demo(conexion, reloj.hoy()); }
    [[nodiscard]] SesionApp sesion(qt::QtEscritorio& escritorio) {
        return {eleccion, escritorio, impresor, reloj, carpeta};
    }
    void dejar_borrador(const char* texto) {
        qt::QtEscritorio escritorio;
        SesionApp una = sesion(escritorio);
        una.mostrar();
        una.pantalla().txtconcepto.SetFocus();
        una.pantalla().txtconcepto.user_edit(texto);
        una.pantalla().Unload();
    }
};

} // namespace quorvel::app
