#include "cli/comando_db.h"

#include "dbtools/avance.h"
#include "dbtools/base.h"
#include "dbtools/datos.h"
#include "dbtools/directorio.h"
#include "dbtools/esquema.h"
#include "dbtools/estado_empresas.h"
#include "dbtools/respaldo.h"
#include "dbtools/revisar.h"
#include "dbtools/sin_clave.h"
#include "dbtools/traslado.h"
#include "dbtools/usuarios.h"
#include "demo/demo.h"
#include "oficina/salida.h"
#include "platform/files/attachments.h"
#include "text/cuantos.h"
#include "text/letras_utf8.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

namespace quorvel::cli {
namespace {

struct Opciones {
    std::string conexion, respaldo, adjuntos, codigo, directorio, busca;
    std::vector<std::string> bases;
    dbtools::PedidoTraslado traslado;
    bool demo = false, reemplazar = false, deshacer = false;
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
        o.codigo.empty() ? std::vector<std::string>{} : dbtools::revisar_codigo(o.conexion, o.codigo);
    mostrar(distinta);
    const int codigo = comprobar(o.conexion, o.adjuntos);
    return distinta.empty() ? codigo : oficina::RECHAZADO;
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
    return cuantos(static_cast<std::int64_t>(n), "archivo adjunto", "archivos adjuntos");
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

/// The directory says what is true of these databases now.
void anotar(const std::string& directorio, const std::vector<std::string>& bases) {
    const auto donde = dbtools::abrir_base(directorio, dbtools::Abrir::existente);
    for (const std::string& base : bases)
        std::cout << dbtools::anotar_en_directorio(*donde, base) << " empresas de "
                  << dbtools::sin_clave(base) << "\n";
}

int mover(const Opciones& o) {
    dbtools::PedidoTraslado pedido = o.traslado;
    pedido.adjuntos = o.base_adjuntos();
    if (o.deshacer) {
        dbtools::deshacer_traslado(pedido);
        std::cout << "La empresa " << pedido.empresa << " sigue donde estaba\n";
        return oficina::BIEN;
    }
    const dbtools::Trasladado hecho = dbtools::trasladar(pedido, dbtools::avance_en_terminal());
    mostrar(hecho.faltan);
    std::cout << "Empresa " << hecho.codigo << " trasladada: " << hecho.filas << " filas y "
              << adjuntos(hecho.adjuntos) << "\n";
    if (!o.directorio.empty()) anotar(o.directorio, {pedido.de, pedido.a});
    return oficina::BIEN;
}

int poner_en_directorio(const Opciones& o) {
    anotar(o.directorio, o.bases);
    return oficina::BIEN;
}

int buscar(const Opciones& o) {
    const auto halladas =
        dbtools::buscar_en_directorio(*dbtools::abrir_base(o.directorio, dbtools::Abrir::existente), o.busca);
    for (const dbtools::EmpresaUbicada& e : halladas)
        std::cout << e.empresa << '\t' << sin_controles(e.rut) << '\t' << sin_controles(e.nombre) << '\t'
                  << e.conexion << "\n";
    return halladas.empty() ? oficina::RECHAZADO : oficina::BIEN;
}

/// One line a company, for all databases that can be read.
int listar(const Opciones& o) {
    auto bases = o.bases;
    if (!o.directorio.empty())
        for (const std::string& base :
             dbtools::bases_del_directorio(*dbtools::abrir_base(o.directorio, dbtools::Abrir::existente)))
            bases.push_back(base);
    int codigo = oficina::BIEN;
    std::cout << "empresa\trut\tnombre\tdescuadrados\tmeses sin cerrar\túltima actividad\tbase\n";
    for (const std::string& base : bases) try {
            for (const dbtools::EstadoEmpresa& e : dbtools::estado_de_empresas(base))
                std::cout << e.empresa << '\t' << sin_controles(e.rut) << '\t' << sin_controles(e.nombre)
                          << '\t' << e.descuadrados << '\t' << e.meses_abiertos << '\t' << e.ultima << '\t'
                          << dbtools::sin_clave(base) << "\n";
        } catch (const std::exception& e) {
            std::cerr << dbtools::sin_clave(base) << ": " << e.what() << "\n";
            codigo = oficina::RECHAZADO;
        }
    return codigo;
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

void con_traslado(CLI::App& c, Opciones& o) {
    c.add_option("EMPRESA", o.traslado.empresa, "Número de la empresa")->required();
    c.add_option("ORIGEN", o.traslado.de, "Base de datos donde está")->required();
    c.add_option("DESTINO", o.traslado.a, "Base de datos adonde va")->required();
    c.add_option("--codigo", o.traslado.codigo, "Número que tendrá en el destino, si no el mismo");
    c.add_flag("--deshacer", o.deshacer, "Deja en el origen una empresa cuyo traslado no terminó");
    c.add_option("--directorio", o.directorio, "Base de datos cuyo directorio se pone al día");
}
void con_directorio(CLI::App& c, Opciones& o) {
    c.add_option("DIRECTORIO", o.directorio, "Base de datos que tiene el directorio de empresas")->required();
}
void con_texto(CLI::App& c, Opciones& o) {
    c.add_option("TEXTO", o.busca, "Comienzo del nombre, de una de sus palabras o del RUT")->required();
}
void con_bases(CLI::App& c, Opciones& o) {
    c.add_option("BASES", o.bases, "Bases de datos con empresas")->required();
}
void con_lista(CLI::App& c, Opciones& o) {
    c.add_option("BASES", o.bases, "Bases de datos con empresas");
    c.add_option("--directorio", o.directorio, "Todas las bases de datos de este directorio");
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
    CLI::App* db = app.add_subcommand(
        "db", "Crea, revisa, afina, respalda y restaura bases de datos; agrega usuarios y traslada empresas");
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
    agregar(*db, "move", "Traslada una empresa a otra base de datos, mientras otros trabajan", mover,
            {con_traslado, con_adjuntos});
    agregar(*db, "directory", "Anota en un directorio las empresas de unas bases de datos",
            poner_en_directorio, {con_directorio, con_bases});
    agregar(*db, "find", "Busca en el directorio en qué base de datos está una empresa", buscar,
            {con_directorio, con_texto});
    agregar(*db, "companies", "Muestra descuadres, meses sin cerrar y última actividad de cada empresa",
            listar, {con_lista});
}

} // namespace quorvel::cli
