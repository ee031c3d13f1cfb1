#include "app/StartWindow.h"
#include "app/catalogos/VentanaCatalogo.h"
#include "app/empresa/ConfiguracionWindow.h"
#include "app/empresa/NuevaEmpresa.h"
#include "app/historia/VentanaHistoria.h"
#include "app/historia/VentanaProteccion.h"
#include "app/libros/VentanaLibros.h"
#include "app/libros/VentanaMeses.h"
#include "app/recientes.h"
#include "dbtools/esquema.h"
#include "demo_run/escenas.h"
#include "historia/comenzar.h"
#include "voucher/cargar.h"
#include "voucher/grabar.h"

namespace quorvel::demo_run {

namespace {

namespace fs = std::filesystem;

void inicio(const Fotografo& fotografo, const app::Eleccion_inicial& eleccion, const fs::path& carpeta) {
    for (const std::string& conexion :
         {std::string("postgresql://ana@servidor.example/contabilidad"),
          std::string("sqlite:/mnt/respaldo/contabilidad_2023.db"), eleccion.conexion})
        app::anotar_reciente(carpeta / "recientes.txt", conexion);
    app::StartWindow ventana(carpeta);
    ventana.show();
    fotografo.foto(ventana, "inicio");
}

void empresa_nueva(const Fotografo& fotografo, app::Teclado& teclado, const fs::path& carpeta, Fecha hoy) {
    const fs::path base = carpeta / "empresa_nueva.db";
    fs::remove(base);
    dbtools::crear_esquema("sqlite:" + base.string());
    app::NuevaEmpresa ventana("sqlite:" + base.string(), hoy);
    ventana.show();
    ventana.activateWindow();
    for (const char* texto :
         {"Panadería Ñandú & Hijos", "76854320-8", "Av. Irarrázaval 2841, Ñuñoa", "Panadería"}) {
        teclado.escribir(texto);
        teclado.tecla(Qt::Key_Tab);
    }
    fotografo.foto(ventana, "empresa_nueva");
}

void maestros(Fotografo& fotografo, app::Teclado& teclado, const std::string& conexion) {
    app::VentanaCatalogo auxiliares(conexion, catalogo("auxiliares"), true);
    auxiliares.show();
    auxiliares.activateWindow();
    teclado.escribir("ltda");
    teclado.tecla(Qt::Key_Return);
    fotografo.foto(auxiliares, "auxiliares");
    auxiliares.hide();
    fotografo.planear({"agregar_auxiliar", Qt::Key_Escape, [&](QWidget&) {
                           teclado.tecla(Qt::Key_Return); // after the name
                           teclado.escribir("76854320-8");
                       }});
    (void)app::VentanaCatalogo(conexion, catalogo("auxiliares"), true).pedir_nueva("zapatería luna", "CL");
}

/// The first purchase of the year, corrected twice.
Clave corregir(clsConexion& db, Fecha hoy) {
    const auto rs =
        db.NewRecord("select top 1 f_comp, documento, num_docum from ctcquorvel where empresa=1 and"
                     " libro='COMPRAS' and f_comp>=#01/01/" +
                     std::to_string(anio(hoy)) + "# order by f_comp, documento, num_docum");
    auto c = *leer_cabecera(db, 1, *rs->at(0).date(), rs->at(1).text(), rs->at(2).text());
    c.lineas = leer_lineas(db, c.clave());
    c.usuario = 1;
    for (const char* glosa : {"Compra de insumos", "Compra de insumos, bodega norte"}) {
        c.concepto = c.lineas.front().glosa = glosa;
        const auto r = GrabarComprobante(db, c, {.hoy = hoy, .huella = leer_guardado(db, c.clave())->huella});
        if (!r.desenlace) throw std::runtime_error(r.desenlace.mensaje());
    }
    return c.clave();
}

void historia(const Fotografo& fotografo, const app::Eleccion_inicial& eleccion, const std::string& nombre,
              Fecha hoy) {
    const Clave corregido = corregir(*abrir_sesion(eleccion.conexion), hoy);
    app::VentanaHistoria ventana(eleccion.conexion, eleccion.empresa, 1, nombre, corregido);
    ventana.show();
    fotografo.foto(ventana, "historia");
    const auto db = abrir_sesion(eleccion.conexion);
    for (int m = 1; m < mes(hoy); ++m) bloquear_mes(*db, eleccion.empresa, 1, anio(hoy), m, true);
    app::VentanaProteccion proteccion(eleccion.conexion, eleccion.empresa, 1, nombre, hoy);
    proteccion.show();
    fotografo.foto(proteccion, "proteccion");
}

} // namespace

void escena_anfitrion(Fotografo& fotografo, app::Teclado& teclado, const app::Eleccion_inicial& eleccion,
                      const fs::path& carpeta) {
    const Fecha hoy = RelojSistema{}.hoy();
    const std::string nombre = app::leer_empresas(*abrir_sesion(eleccion.conexion)).front().nombre;
    inicio(fotografo, eleccion, carpeta);
    empresa_nueva(fotografo, teclado, carpeta, hoy);
    app::ConfiguracionWindow configuracion(eleccion.conexion, eleccion.empresa, nombre, hoy);
    configuracion.show();
    fotografo.foto(configuracion, "configuracion");
    app::VentanaLibros libros(eleccion.conexion, eleccion.empresa, nombre, hoy);
    constexpr std::pair<libros::Libro, const char*> LIBROS[] = {{libros::Libro::diario, "diario"},
                                                                {libros::Libro::mayor, "mayor"},
                                                                {libros::Libro::balance, "balance"},
                                                                {libros::Libro::mensual, "grafico"}};
    for (const auto& [libro, foto] : LIBROS) {
        libros.abrir(libro);
        if (libro == libros::Libro::mayor) teclado.escribir("103"); // clients: accounts with movements
        fotografo.foto(libros, foto);
    }
    maestros(fotografo, teclado, eleccion.conexion);
    historia(fotografo, eleccion, nombre, hoy);
    app::VentanaMeses meses(eleccion.conexion, eleccion.empresa, nombre, hoy,
                            {[](const libros::Posicion&) {}, [] { return std::vector<BorradorLibre>(); },
                             [](const fs::path&) {}});
    meses.show();
    fotografo.foto(meses, "meses");
}

} // namespace quorvel::demo_run
