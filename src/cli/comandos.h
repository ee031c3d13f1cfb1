#pragma once
#include "oficina/oficina.h"
#include "oficina/problemas.h"

#include <functional>
#include <nlohmann/json.hpp>

namespace CLI {
class App;
}

namespace quorvel::cli {

/// What a command hands back: people read the sentence and the problems, programs the object.
struct Respuesta {
    std::string frase{};
    std::vector<oficina::Problema> problemas{};
    nlohmann::json datos = nlohmann::json::object();
    bool frase_es_documento = false; ///< a report: its text is printed as it is
};
/// Database, company and user, the same in every command.
void agregar_oficina(CLI::App& comando, oficina::OpcionesOficina& o);
/// Runs the command when its name stands on the line, prints what it answers and sets the exit code.
void al_ejecutar(CLI::App& comando, const oficina::OpcionesOficina& o, std::function<Respuesta()> trabajo);
/// A wrong combination of options. @throws always
[[noreturn]] void mal_uso(const std::string& mensaje);
/// "1 comprobante", "12 comprobantes"
[[nodiscard]] std::string cantidad(std::size_t n, const std::string& singular, const std::string& plural);

/// Each adds its command to a command line. One that does not end well ends the program by CLI::RuntimeError
/// with its exit code (oficina/salida.h).
void agregar_import(CLI::App& app);
void agregar_check(CLI::App& app);
void agregar_export(CLI::App& app);
void agregar_print(CLI::App& app);
void agregar_report(CLI::App& app);
void agregar_register(CLI::App& app);

} // namespace quorvel::cli
