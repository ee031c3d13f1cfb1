#include "cli/comando_db.h"

#include "dbtools/avance.h"
#include "dbtools/datos.h"
#include "dbtools/esquema.h"
#include "dbtools/respaldo.h"
#include "dbtools/revisar.h"
#include "dbtools/usuarios.h"
#include "demo/demo.h"
#include "oficina/salida.h"
#include "platform/files/attachments.h"
#include "text/letras_utf8.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

namespace quorvel::cli {
namespace {

struct Opciones {
    std::string conexion, respaldo, adjuntos, codigo;
    bool demo = false, reemplazar = false;
    dbtools::UsuarioNuevo usuario;
    /// Where the program itself keeps the attached files, unless told otherwise.
    [[nodiscard]] std::filesystem::path base_adjuntos() const {
        return adjuntos.empty() ? attachment_base(dbtools::carpeta_personal())
                                : std::filesystem::path(adjuntos);
    }
};

int crear(const Opciones& o) {
    if (o.demo)
        demo::crear_demo(o.conexion);
    else
        dbtools::crear_esquema(o.conexion);
    std::cout << "Base de datos creada" << (o.demo ? " con la empresa de demostración" : "") << "\n";
    return 0;
}

void mostrar(const std::vector<std::string>& hallazgos) {
    for (const std::string& hallazgo : hallazgos) std::cout << sin_controles(hallazgo) << "\n";
}

int comprobar(const std::string& conexion, const std::filesystem::path& adjuntos) {
    const std::vector<std::string> hallazgos = dbtools::revisar(conexion, adjuntos);
    mostrar(hallazgos);
    if (hallazgos.empty()) std::cout << "Base de datos sin observaciones\n";
    return hallazgos.empty() ? oficina::BIEN : oficina::RECHAZADO;
}

int comprobar(const Opciones& o) {
    const auto distinta =
        o.codigo.empty() ? std::vector<std::string>{} : revisar_codigo(o.conexion, o.codigo);
    mostrar(distinta);
    const int codigo = comprobar(o.conexion, o.adjuntos);
    return distinta.empty() ? codigo : RECHAZADO;
}

int mejorar(const Opciones& o) {
    const dbtools::Afinado hecho = dbtools::afinar(o.conexion);
    std::cout << (hecho.indices == 0 ? "No falta ningún índice"
                                     : "Índices creados: " + std::to_string(hecho.indices))
              << "\n";
    if (hecho.historia)
        std::cout << "La historia comienza con " << hecho.versiones
                  << (hecho.versiones == 1 ? " comprobante\n" : " comprobantes\n");
    return 0;
}

int poner_usuario(const Opciones& o) {
    const int codigo = dbtools::agregar_usuario(o.conexion, o.usuario);
    std::cout << "Usuario " << codigo << ": " << sin_controles(o.usuario.nombre) << "\n";
    return oficina::BIEN;
}

std::string adjuntos(std::size_t n) {
    return std::to_string(n) + (n == 1 ? " archivo adjunto" : " archivos adjuntos");
}

int hacer_respaldo(const Opciones& o) {
    const dbtools::Respaldado hecho =
        dbtools::respaldar(o.conexion, o.respaldo, o.base_adjuntos(), dbtools::avance_en_terminal());
    std::cout << "Respaldo en " << o.respaldo << ": la base de datos y " << adjuntos(hecho.adjuntos) << "\n";
    mostrar(hecho.faltan);
    if (hecho.faltan.empty()) return oficina::BIEN;
    std::cout << "Se buscaron en " << o.base_adjuntos().string() << "; --adjuntos indica otra carpeta\n";
    return oficina::RECHAZADO;
}

int poner_respaldo(const Opciones& o) {
    const std::vector<std::string> diferencias =
        dbtools::verificar(o.respaldo, dbtools::avance_en_terminal());
    mostrar(diferencias);
    if (!diferencias.empty()) {
        std::cout << "El respaldo no está como se hizo; no se restauró nada\n";
        return oficina::RECHAZADO;
    }
    const dbtools::Restaurado hecho = dbtools::restaurar(o.respaldo, o.conexion, o.base_adjuntos(),
                                                         o.reemplazar, dbtools::avance_en_terminal());
    std::cout << "Base de datos restaurada, con " << adjuntos(hecho.adjuntos) << "\n";
    if (!hecho.anteriores.empty())
        std::cout << "Los adjuntos que había quedaron en " << hecho.anteriores.string() << "\n";
    return comprobar(o.conexion, o.base_adjuntos());
}

using Opcion = void (*)(CLI::App&, Opciones&);

void con_conexion(CLI::App& c, Opciones& o) {
    c.add_option("CONEXION", o.conexion, "sqlite:RUTA, una ruta o postgresql://…")->required();
}
void con_demo(CLI::App& c, Opciones& o) { c.add_flag("--demo", o.demo, "Con una empresa de demostración"); }
void con_destino(CLI::App& c, Opciones& o) {
    c.add_option("DESTINO", o.respaldo, "Carpeta nueva o vacía")->required();
}
void con_respaldo(CLI::App& c, Opciones& o) {
    c.add_option("RESPALDO", o.respaldo, "Carpeta hecha por db backup")->required();
}
void con_adjuntos(CLI::App& c, Opciones& o) {
    c.add_option("--adjuntos", o.adjuntos, "Carpeta que contiene la carpeta adjunto de los archivos");
}
void con_codigo(CLI::App& c, Opciones& o) {
    c.add_option("--codigo", o.codigo,
                 "Código de historia anotado o impreso antes, que la base debe contener");
}
void con_usuario(CLI::App& c, Opciones& o) {
    c.add_option("NOMBRE", o.usuario.nombre, "Nombre de quien trabaja")->required();
    c.add_flag("--solo-suyos", o.usuario.solo_suyos, "Ve los comprobantes que él grabó por última vez");
    c.add_flag("--sin-borrar", o.usuario.sin_borrar_lineas, "No puede borrar líneas");
    c.add_flag("--sin-imprimir", o.usuario.sin_imprimir, "No puede imprimir");
}
void con_reemplazar(CLI::App& c, Opciones& o) {
    c.add_flag("--reemplazar", o.reemplazar, "Reemplaza la base de datos que haya");
}

void agregar(CLI::App& db, const char* nombre, const char* ayuda, int (*accion)(const Opciones&),
             std::initializer_list<Opcion> lleva) {
    CLI::App* comando = db.add_subcommand(nombre, ayuda);
    auto opciones = std::make_shared<Opciones>();
    for (const Opcion opcion : lleva) opcion(*comando, *opciones);
    comando->callback([opciones, accion] {
        int codigo = oficina::SIN_DATOS;
        try {
            codigo = accion(*opciones);
        } catch (const std::exception& e) {
            std::cerr << e.what() << "\n";
        }
        if (codigo != 0) throw CLI::RuntimeError(codigo);
    });
}

} // namespace

void agregar_comando_db(CLI::App& app) {
    CLI::App* db =
        app.add_subcommand("db", "Crea, revisa, afina, respalda y restaura bases de datos; agrega usuarios");
    db->require_subcommand(1);
    agregar(*db, "create", "Crea las tablas en una base de datos nueva", crear, {con_conexion, con_demo});
    agregar(*db, "check", "Muestra lo que falta y los datos que no concuerdan", comprobar,
            {con_conexion, con_adjuntos, con_codigo});
    agregar(*db, "tune", "Crea los índices que faltan y la historia", mejorar, {con_conexion});
    agregar(*db, "user", "Agrega un usuario", poner_usuario, {con_conexion, con_usuario});
    agregar(*db, "backup", "Copia una base de datos en uso y sus archivos adjuntos", hacer_respaldo,
            {con_conexion, con_destino, con_adjuntos});
    agregar(*db, "restore", "Comprueba un respaldo y lo pone en una base de datos", poner_respaldo,
            {con_respaldo, con_conexion, con_adjuntos, con_reemplazar});
}

} // namespace quorvel::cli
