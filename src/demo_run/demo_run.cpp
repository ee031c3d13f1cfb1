#include "demo_run/demo_run.h"

#include "app/anfitrion.h"
#include "demo/demo.h"
#include "demo_run/escenas.h"
#include "historia/comenzar.h"
#include "qt/FormWindow.h"
#include "screen/frmQuorvel.h"

#include <iostream>

namespace quorvel::demo_run {

namespace fs = std::filesystem;

int demo_run(const fs::path& carpeta) {
    try {
        fs::create_directories(carpeta);
        // Every run starts from the same company, so that it always keys in the same documents.
        const auto base = carpeta / "demo-run.db";
        for (const char* cola : {"", "-wal", "-shm"}) fs::remove(base.string() + cola);
        for (const char* pdf : {"ctcQuorvel.pdf", "ctccheque1.pdf", "ctcfactura.pdf"})
            fs::remove(carpeta / pdf);
        demo::crear_demo("sqlite:" + base.string());
        proteger(*abrir_sesion("sqlite:" + base.string()), 1, 1, true, true);
        qt::QtEscritorio escritorio;
        ImpresorConFotos impresor(carpeta);
        const RelojSistema reloj;
        const app::Eleccion_inicial eleccion{"sqlite:" + base.string(), carpeta / "print.db", 1, 1};
        app::SesionApp sesion(eleccion, escritorio, impresor, reloj, carpeta);
        sesion.mostrar();
        frmQuorvel& f = sesion.pantalla();
        qt::FormWindow* ventana = escritorio.window_of(f);
        if (ventana == nullptr) throw std::runtime_error("La pantalla no se abrió");
        const app::Anfitrion anfitrion(sesion, escritorio, eleccion, reloj.hoy());
        ventana->resize(1280, 720);
        app::Teclado teclado;
        Mecanografo mecanografo(teclado);
        Fotografo fotografo(carpeta, teclado);
        Estudio estudio{f, *ventana, mecanografo, fotografo};
        for (const auto escena :
             {escena_compra, escena_asistentes, escena_factura, escena_registro, escena_cierre})
            escena(estudio);
        f.Unload();
        escena_anfitrion(fotografo, teclado, eleccion, carpeta);
        for (const auto& mensaje : fotografo.mensajes()) std::cout << "Mensaje: " << mensaje << '\n';
        std::cout << teclado.pulsaciones() << " pulsaciones, PDF:";
        for (const auto& pdf : impresor.impresos()) std::cout << ' ' << pdf;
        std::cout << '\n';
        return fotografo.todo_visto() && impresor.impresos().size() == 3 ? 0 : 1;
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return 1;
    }
}

} // namespace quorvel::demo_run
