#include "app/db/comando_db.h"

#include "app/db/demo.h"
#include "app/db/esquema.h"
#include "app/db/revisar.h"
#include "app/salida.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <iostream>
#include <memory>

namespace quorvel {
namespace {

struct Opciones {
    std::string conexion;
    bool demo = false;
};

int crear(const Opciones& o) {
    if (o.demo)
        crear_demo(o.conexion);
    else
        crear_esquema(o.conexion);
    std::cout << "Base de datos creada" << (o.demo ? " con la empresa de demostración" : "") << "\n";
    return 0;
}

int comprobar(const Opciones& o) {
    const std::vector<std::string> hallazgos = revisar(o.conexion);
    for (const std::string& hallazgo : hallazgos) std::cout << hallazgo << "\n";
    if (hallazgos.empty()) std::cout << "Base de datos sin observaciones\n";
    return hallazgos.empty() ? BIEN : RECHAZADO;
}

int mejorar(const Opciones& o) {
    const int creados = afinar(o.conexion);
    std::cout << (creados == 0 ? "No falta ningún índice" : "Índices creados: " + std::to_string(creados))
              << "\n";
    return 0;
}

void agregar(CLI::App& db, const char* nombre, const char* ayuda, bool con_demo,
             int (*accion)(const Opciones&)) {
    CLI::App* comando = db.add_subcommand(nombre, ayuda);
    auto opciones = std::make_shared<Opciones>();
    comando->add_option("CONEXION", opciones->conexion, "sqlite:RUTA, una ruta o postgresql://…")->required();
    if (con_demo) comando->add_flag("--demo", opciones->demo, "Con una empresa de demostración");
    comando->callback([opciones, accion] {
        int codigo = SIN_DATOS;
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
    CLI::App* db = app.add_subcommand("db", "Crea, revisa y afina bases de datos");
    db->require_subcommand(1);
    agregar(*db, "create", "Crea las tablas en una base de datos nueva", true, crear);
    agregar(*db, "check", "Muestra lo que falta y los datos que no concuerdan", false, comprobar);
    agregar(*db, "tune", "Crea los índices que faltan", false, mejorar);
}

} // namespace quorvel
