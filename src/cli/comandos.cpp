#include "cli/comandos.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace quorvel::cli {

namespace {

using nlohmann::json;

void imprimir_json(const Respuesta& r, oficina::Salida salida) {
    json datos = r.datos;
    datos["ok"] = salida == oficina::BIEN;
    datos["problemas"] = json::array();
    for (const oficina::Problema& p : r.problemas)
        datos["problemas"].push_back(
            {{"archivo", p.archivo}, {"linea", p.linea}, {"campo", p.campo}, {"mensaje", p.mensaje}});
    std::cout << datos.dump(2, ' ', false, json::error_handler_t::replace) << std::endl;
}

void imprimir(const Respuesta& r) {
    for (const oficina::Problema& p : r.problemas) std::cerr << texto(p) << '\n';
    (r.problemas.empty() ? std::cout : std::cerr) << r.frase << (r.frase_es_documento ? "" : "\n");
    std::cout.flush();
}

oficina::Salida responder(const oficina::OpcionesOficina& o, const Respuesta& r, oficina::Salida salida) {
    if (o.json)
        imprimir_json(r, salida);
    else
        imprimir(r);
    if (std::cout.good()) return salida;
    std::cerr << "No se pudo escribir la salida\n";
    return oficina::SIN_DATOS;
}

oficina::Salida ejecutar(const oficina::OpcionesOficina& o, const std::function<Respuesta()>& trabajo) {
    Respuesta fallida;
    const auto fallar = [&](const std::exception& e, oficina::Salida salida) {
        fallida.problemas.push_back({"", 0, "", e.what()});
        fallida.frase_es_documento = true;
        return responder(o, fallida, salida);
    };
    try {
        const Respuesta r = trabajo();
        return responder(o, r, salida_de(r.problemas));
    } catch (const std::invalid_argument& e) { // a value on the line that cannot be read
        return fallar(e, oficina::MAL_USO);
    } catch (const std::exception& e) {
        return fallar(e, oficina::SIN_DATOS);
    }
}

} // namespace

void agregar_oficina(CLI::App& comando, oficina::OpcionesOficina& o) {
    comando.add_option("--db", o.conexion, "sqlite:RUTA, una ruta o postgresql://…")->required();
    comando.add_option("--company", o.empresa, "Código de la empresa")->capture_default_str();
    comando.add_option("--user", o.usuario, "Código del usuario")->capture_default_str();
    comando.add_flag("--json", o.json, "Respuesta para programas, en JSON");
}

void al_ejecutar(CLI::App& comando, const oficina::OpcionesOficina& o, std::function<Respuesta()> trabajo) {
    comando.callback([&o, trabajo = std::move(trabajo)] {
        const oficina::Salida salida = ejecutar(o, trabajo);
        if (salida != oficina::BIEN) throw CLI::RuntimeError(salida);
    });
}

void mal_uso(const std::string& mensaje) { throw std::invalid_argument(mensaje); }

std::string cantidad(std::size_t n, const std::string& singular, const std::string& plural) {
    return std::to_string(n) + " " + (n == 1 ? singular : plural);
}

} // namespace quorvel::cli
